#ifndef ORVIA_APP_QUIET_BOXES_H
#define ORVIA_APP_QUIET_BOXES_H

#include "common/flag.h"
#include "platform/host.h"

/// Message boxes that fall silent once the program is closing: whoever unwinds from a wait by
/// then gets the answer of a box closed by its frame.
class QuietBoxes final : public MessageBoxes {
 public:
    QuietBoxes(MessageBoxes& boxes, const Flag& shuttingDown)
        : boxes_(boxes), shuttingDown_(shuttingDown) {}

    BoxAnswer Show(const MessageBox& box) override {
        return shuttingDown_ == False ? boxes_.Show(box) : AnswerOfClosedBox(box.Buttons);
    }

 private:
    MessageBoxes& boxes_;
    const Flag& shuttingDown_;
};

#endif  // ORVIA_APP_QUIET_BOXES_H
