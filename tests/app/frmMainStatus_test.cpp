// The line at the lower edge of the main window.
#include <QLabel>
#include <QTextDocument>

#include "app/frmMain_fixture.h"
#include "platform/qt/text_qt.h"

namespace testing_support {
namespace {

class MainWindowStatus : public MainWindowTest {
 protected:
    [[nodiscard]] std::string Line() { return FromQt(Find<QLabel>("lblStatus").text()); }
    [[nodiscard]] bool Tells(const std::string& text) {
        return host_.RunUntil([&] { return Line().find(text) != std::string::npos; });
    }
};

TEST_F(MainWindowStatus, TellsOfTheConnectionAndTheBook) {
    StartConnected();
    EXPECT_TRUE(Tells("  Address book site loaded, client radios: 3"));
}

TEST_F(MainWindowStatus, TellsWhatIsDoneAndWhatCameOfIt) {
    StartConnected();
    ClickClient(2);
    std::string during;
    Once([this] { return Line().find("Site 2") != std::string::npos; }, [&] { during = Line(); });
    Click("cmdGetSettings");
    EXPECT_NE(during.find(" Site 2"), std::string::npos) << during;
    EXPECT_NE(during.find("..."), std::string::npos) << during;
    EXPECT_TRUE(Tells("  Sample of Site 2 received"));
}

TEST_F(MainWindowStatus, StandsBelowAllAndTakesNoSizeFromTheWindow) {
    StartConnected();
    const auto& line = Find<QLabel>("lblStatus");
    EXPECT_TRUE(line.isVisible());
    EXPECT_GE(line.mapTo(window_.get(), QPoint()).y(), window_->height() - 2 * line.height());
    EXPECT_EQ(window_->size(), QSize(893, 633));
    window_->SetStatus(std::string(500, 'W'), false);
    QCoreApplication::processEvents();
    EXPECT_EQ(line.minimumSizeHint().width(), 0);
    EXPECT_LE(line.width(), window_->width());
    EXPECT_EQ(window_->size(), QSize(893, 633));
}

TEST_F(MainWindowStatus, WhatDoesNotFitIsToldWholeByTheTip) {
    StartConnected();
    const std::string whole(300, 'W');
    window_->SetStatus(whole, true);
    QTextDocument tip;
    tip.setHtml(Find<QLabel>("lblStatus").toolTip());
    EXPECT_EQ(FromQt(tip.toPlainText()), whole);
    EXPECT_EQ(Line(), whole) << "what a screen reader takes";
    window_->SetStatus("short", false);
    EXPECT_TRUE(Find<QLabel>("lblStatus").toolTip().isEmpty());
}

TEST_F(MainWindowStatus, AFailureBearsASign) {
    StartConnected();
    auto& line = Find<QLabel>("lblStatus");
    const auto beginning = [&line] {
        return line.grab(QRect(0, 0, line.height(), line.height())).toImage();
    };
    window_->SetStatus("", false);
    const QImage empty = beginning();
    window_->SetStatus("", true);
    EXPECT_NE(beginning(), empty);
    window_->SetStatus("", false);
    EXPECT_EQ(beginning(), empty);
}

}  // namespace
}  // namespace testing_support
