#ifndef ORVIA_CONSOLE_FRM_PARTS_H
#define ORVIA_CONSOLE_FRM_PARTS_H

#include <QString>

class QDialog;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QWidget;

/// A field for a name of `characters` characters at most.
[[nodiscard]] QLineEdit* NameField(QWidget* parent, const QString& name, int characters);

/// `cmdNext`, the default button, and `cmdCancel`, which Escape presses, in a row to the right.
struct NextCancel {
    QPushButton* cmdNext = nullptr;
    QPushButton* cmdCancel = nullptr;
    QHBoxLayout* Row = nullptr;
};
[[nodiscard]] NextCancel NextAndCancel(QDialog& dialog, const QString& nextText);

#endif  // ORVIA_CONSOLE_FRM_PARTS_H
