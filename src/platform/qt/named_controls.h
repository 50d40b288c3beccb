#ifndef ORVIA_PLATFORM_QT_NAMED_CONTROLS_H
#define ORVIA_PLATFORM_QT_NAMED_CONTROLS_H

#include <QString>

class QDialog;
class QLabel;
class QPushButton;
class QWidget;

// Controls that carry their name as object name.

/// A caption for `buddy`, whose key is marked in the text.
[[nodiscard]] QLabel* CaptionFor(QWidget* buddy, const QString& name, const QString& text);

/// A label that shows a value, in plain text; `meaning` tells what it shows.
[[nodiscard]] QLabel* ValueLabel(QWidget* parent, const QString& name, const QString& meaning);

/// A button; an "&" in the text marks its key. While it has the focus Enter presses it, whichever
/// button is the default one; an Enter that is still held from an earlier press does not.
[[nodiscard]] QPushButton* NamedButton(QWidget* parent, const QString& name, const QString& text);

/// Takes the pictures off the buttons of a dialog: a style gives them to some boxes and not to
/// others.
void TakeIconsOffButtons(const QDialog& dialog);

#endif  // ORVIA_PLATFORM_QT_NAMED_CONTROLS_H
