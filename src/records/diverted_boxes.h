#ifndef ORVIA_RECORDS_DIVERTED_BOXES_H
#define ORVIA_RECORDS_DIVERTED_BOXES_H

#include "platform/host.h"

/// Message boxes that can be told to go elsewhere for a while: where nobody is there to answer,
/// what a box would say is written down.
class DivertedBoxes final : public MessageBoxes {
 public:
    explicit DivertedBoxes(MessageBoxes& boxes) : boxes_(boxes) {}

    BoxAnswer Show(const BoxContent& box) override {
        return (elsewhere_ != nullptr ? *elsewhere_ : boxes_).Show(box);
    }

    /// Sends boxes to `elsewhere` while it lives.
    class Diversion {
     public:
        Diversion(DivertedBoxes& boxes, MessageBoxes& elsewhere)
            : boxes_(boxes), before_(boxes.elsewhere_) {
            boxes_.elsewhere_ = &elsewhere;
        }
        ~Diversion() { boxes_.elsewhere_ = before_; }
        Diversion(const Diversion&) = delete;
        Diversion& operator=(const Diversion&) = delete;

     private:
        DivertedBoxes& boxes_;
        MessageBoxes* const before_;
    };

 private:
    MessageBoxes& boxes_;
    MessageBoxes* elsewhere_ = nullptr;
};

#endif  // ORVIA_RECORDS_DIVERTED_BOXES_H
