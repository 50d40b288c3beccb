#include "app/frmAbout.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>

#include "app/lifecycle.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/pictures.h"
#include "platform/qt/text_qt.h"

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    constexpr int PictureSize = 96;
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About Harrowmere"));

    auto* picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("Picture1"));
    picture->setAccessibleName(QStringLiteral("Picture of the program"));
    picture->setPixmap(Picture(QStringLiteral("orvia"))
                           .pixmap(QSize(PictureSize, PictureSize), devicePixelRatioF()));
    auto* version = new QLabel(ToQt("Orvia\nVersion " + VersionText()), this);
    version->setObjectName(QStringLiteral("lblVersion"));
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    TakeIconsOffButtons(*this);

    auto* row = new QHBoxLayout;
    row->addWidget(picture);
    row->addSpacing(fontMetrics().height());
    row->addWidget(version, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(buttons);
    // What stands in it is narrower than its title beside the buttons of a frame.
    constexpr int FrameButtons = 9;  // with what surrounds them, in heights of the font
    column->addStrut(fontMetrics().horizontalAdvance(windowTitle()) +
                     FrameButtons * fontMetrics().height());
    column->setSizeConstraint(QLayout::SetFixedSize);
}
