#ifndef ORVIA_SETUP_INPUT_HELD_H
#define ORVIA_SETUP_INPUT_HELD_H

#include "setup/setup_view.h"

/// Holds the input of the dialog while the logger is spoken to.
class InputHeld {
 public:
    explicit InputHeld(SetupView& view) : view_(view) { view_.HoldInput(true); }
    ~InputHeld() { view_.HoldInput(false); }
    InputHeld(const InputHeld&) = delete;
    InputHeld& operator=(const InputHeld&) = delete;

 private:
    SetupView& view_;
};

#endif  // ORVIA_SETUP_INPUT_HELD_H
