#include "platform/qt/option_group.h"

#include <QRadioButton>
#include <algorithm>

namespace {

using Options = QList<QRadioButton*>;

void LetTabIn(const Options& options) {
    const bool chosen = std::any_of(options.begin(), options.end(),
                                    [](const QRadioButton* option) { return option->isChecked(); });
    for (QRadioButton* option : options) {
        const bool entry = chosen ? option->isChecked() : option == options.front();
        option->setFocusPolicy(entry ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

}  // namespace

void TabEntersAtChosen(const QWidget& frame) {
    const auto options = frame.findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
    for (QRadioButton* option : options) {
        // Behind the toolkit's own care for the one that was pressed.
        QObject::connect(option, &QRadioButton::toggled, option, [options] { LetTabIn(options); });
    }
    LetTabIn(options);
}
