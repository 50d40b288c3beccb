#ifndef ORVIA_PLATFORM_QT_OPTION_GROUP_H
#define ORVIA_PLATFORM_QT_OPTION_GROUP_H

class QWidget;

/// Has the Tab key enter the option buttons that lie directly in `frame` at the chosen one, and
/// leave them from there: the arrow keys go from one to the next. Without it Tab enters at the
/// first one, or at the one that had the focus last.
void TabEntersAtChosen(const QWidget& frame);

#endif  // ORVIA_PLATFORM_QT_OPTION_GROUP_H
