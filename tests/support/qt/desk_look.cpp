#include "support/qt/desk_look.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>

#include "platform/qt/text_qt.h"

namespace testing_support {

QPalette DeskPalette(bool dark) {
    const QColor ground = dark ? QColor(53, 53, 53) : QColor(239, 239, 239);
    QPalette palette(ground, ground);
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    if (dark) {
        palette.setColor(QPalette::Base, QColor(35, 35, 35));
        palette.setColor(QPalette::AlternateBase, QColor(45, 45, 45));
    }
    return palette;
}

DeskColours::DeskColours(bool dark) : before_(QApplication::palette()) {
    QApplication::setPalette(DeskPalette(dark));
}

DeskColours::~DeskColours() {
    QApplication::setPalette(before_);
}

QString DeskName(bool dark) {
    return dark ? QStringLiteral("dark") : QStringLiteral("light");
}

QString PictureFolder() {
    return qEnvironmentVariable("ORVIA_SCREENSHOTS");
}

void KeepPicture(QWidget& window, const QString& name) {
    const QString folder = PictureFolder();
    if (folder.isEmpty()) {
        return;
    }
    const QString file = QStringLiteral("%1-%2x.png").arg(name).arg(window.devicePixelRatioF());
    EXPECT_TRUE(QDir().mkpath(folder));
    EXPECT_TRUE(window.grab().save(QDir(folder).filePath(file)));
}

void KeepOnBothScreens(QWidget& window, const QString& name, bool dark,
                       const std::function<void()>& look) {
    for (const QSize size : {QSize(990, 566), QSize(1246, 866)}) {
        window.resize(size);
        QCoreApplication::processEvents();
        if (look != nullptr) {
            look();
        }
        EXPECT_EQ(window.size(), size) << FromQt(name) << " does not fit";
        KeepPicture(window, QStringLiteral("%1-%2-%3").arg(name, DeskName(dark)).arg(size.width()));
    }
}

}  // namespace testing_support
