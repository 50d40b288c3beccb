#include "app/frmSplash.h"

#include <QGuiApplication>
#include <QIcon>
#include <QScreen>

frmSplash::frmSplash() : QLabel(nullptr, Qt::SplashScreen | Qt::WindowStaysOnTopHint) {
    const QSize size(480, 270);
    setObjectName(QStringLiteral("frmSplash"));
    setAccessibleName(QStringLiteral("Orvia is starting"));
    setPixmap(QIcon(QStringLiteral(":/icons/splash.svg")).pixmap(size, devicePixelRatioF()));
    setFixedSize(size);
    move(screen()->availableGeometry().center() - rect().center());
}
