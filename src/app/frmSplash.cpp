#include "app/frmSplash.h"

#include <QGuiApplication>
#include <QScreen>

#include "platform/qt/pictures.h"

frmSplash::frmSplash() : QLabel(nullptr, Qt::SplashScreen | Qt::WindowStaysOnTopHint) {
    const QSize size(480, 270);
    setObjectName(QStringLiteral("frmSplash"));
    setAccessibleName(QStringLiteral("Orvia is starting"));
    setPixmap(Picture(QStringLiteral("splash")).pixmap(size, devicePixelRatioF()));
    setFixedSize(size);
    move(screen()->availableGeometry().center() - rect().center());
}
