// Pictures of the window of a report, light and dark, and of its pages.
#include <QDir>
#include <QPalette>
#include <QPixmap>
#include <QScrollBar>

#include "frmReport_fixture.h"

namespace testing_support {
namespace {

class ReportScreens : public ReportFormTest, public ::testing::WithParamInterface<bool> {
 protected:
    ReportScreens() : before_(QApplication::palette()) {
        QPalette dark(QColor(53, 53, 53), QColor(53, 53, 53));
        dark.setColor(QPalette::Base, QColor(35, 35, 35));
        dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
        QApplication::setPalette(GetParam() ? dark : QPalette(QColor(239, 239, 239)));
    }
    ~ReportScreens() override {
        delete form_;
        QApplication::setPalette(before_);
    }

    static QString Folder() { return qEnvironmentVariable("ORVIA_SCREENSHOTS"); }

    /// As on a screen of 1024 by 600 and on one of 1280 by 900; pictures cost time, so they are
    /// made where a folder waits for them.
    void Keep(const std::string& name) {
        for (const QSize size : {QSize(990, 566), QSize(1246, 866)}) {
            form_->resize(size);
            QCoreApplication::processEvents();
            EXPECT_EQ(form_->size(), size) << name << " does not fit";
            if (!Folder().isEmpty()) {
                const QString file = QStringLiteral("frmReport-%1-%2-%3-%4x.png")
                                         .arg(ToQt(name))
                                         .arg(QLatin1String(GetParam() ? "dark" : "light"))
                                         .arg(size.width())
                                         .arg(form_->devicePixelRatioF());
                EXPECT_TRUE(QDir().mkpath(Folder()));
                EXPECT_TRUE(form_->grab().save(QDir(Folder()).filePath(file)));
            }
        }
    }
    void KeepPages(const std::string& name) {
        Pick("report.pdf");
        Click("cmdPdf");
        EXPECT_TRUE(Boxes().empty());
        if (!Folder().isEmpty() && !GetParam()) {
            Run(QStringLiteral("pdftoppm"),
                {QStringLiteral("-r"), QStringLiteral("110"), QStringLiteral("-png"),
                 ToQt(PathOf("report.pdf")),
                 QDir(Folder()).filePath(QStringLiteral("report-page-") + ToQt(name))});
        }
    }

 private:
    QPalette before_;
};

TEST_P(ReportScreens, OfALoggerWithAFlow) {
    Open();
    Type("txtSite", "Dam 4, left bank");
    Type("txtMadeBy", "J. Smith");
    Control("lvwReport")->setFocus();
    Keep("flow");
    KeepPages("flow");
}

TEST_P(ReportScreens, OfTenChannels) {
    Open(TwoWeeks(8, 2));
    Control<QTableView>("lvwReport")->horizontalScrollBar()->setValue(777);
    Keep("wide");
    KeepPages("wide");
}

TEST_P(ReportScreens, OfOneChannel) {
    SeriesMaker maker(1, 0);
    for (int i = 0; i < 100; ++i) {
        maker.Add(SomeDay + Moment{i} * 900, {i * i % 97});
    }
    Open(maker, {SomeDay, SomeDay + 3 * SecondsPerDay});
    Keep("narrow");
    KeepPages("narrow");
}

TEST_P(ReportScreens, OfFaultsAndNothing) {
    Open();
    SetDate("dtpTo", {2024, 1, 10});
    Keep("fault");
    Open(SeriesMaker(2, 1), {});
    Keep("empty");
    KeepPages("empty");
}

INSTANTIATE_TEST_SUITE_P(Palettes, ReportScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace testing_support
