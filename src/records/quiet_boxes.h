#ifndef ORVIA_RECORDS_QUIET_BOXES_H
#define ORVIA_RECORDS_QUIET_BOXES_H

#include "common/flag.h"
#include "platform/host.h"

/// Message boxes that fall silent once the program, or the window that asks, is closing: whoever
/// unwinds from a wait by then gets the answer of a box closed by its frame.
class QuietBoxes final : public MessageBoxes {
 public:
    QuietBoxes(MessageBoxes& boxes, const Flag& closing) : boxes_(boxes), closing_(closing) {}

    BoxAnswer Show(const BoxContent& box) override {
        return closing_ == False ? boxes_.Show(box) : AnswerOfClosedBox(box.Buttons);
    }

 private:
    MessageBoxes& boxes_;
    const Flag& closing_;
};

#endif  // ORVIA_RECORDS_QUIET_BOXES_H
