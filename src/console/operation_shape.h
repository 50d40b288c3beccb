#ifndef ORVIA_CONSOLE_OPERATION_SHAPE_H
#define ORVIA_CONSOLE_OPERATION_SHAPE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "common/fault.h"
#include "console/logger_operations.h"

// The shape that the operations on one logger share: a guard, the window that they are for, its
// radio selected, and the link let go of on every way out.

/// The window that an operation is for, the slot it stands in, and its radio. Held for the whole
/// operation: a click during a wait can close the window, and change or delete the entry.
struct Target {
    std::shared_ptr<ClientWindow> Window;
    std::int16_t Slot = 0;
    std::optional<ClientRadio> Radio;  ///< nothing for a window without an entry
};

/// Whether the link is connected and neither an operation nor a sampling mode holds it.
[[nodiscard]] bool LinkIsFree(const OperationContext& context);

/// The guard of an operation: the link is free and a window is open.
[[nodiscard]] bool MayStart(const OperationContext& context);

/// The window in a slot; none if the slot is empty.
[[nodiscard]] Target WindowInSlot(const OperationContext& context, int slot);

/// The first window that is the active one; none if there is none.
[[nodiscard]] Target ActiveWindow(const OperationContext& context);

/// The window that a walk over all windows has come to; none if its slot is empty.
[[nodiscard]] Target WindowOfWalk(const OperationContext& context);

/// Brings the server radio to the radio of `target`; false for one without.
[[nodiscard]] bool SelectRadioOf(const OperationContext& context, const Target& target);

/// Name of the radio of `target`, for who is told about it.
[[nodiscard]] std::string NameOf(const Target& target);

/// Has the window of `target` read its logger's settings, and tells of it. False if that failed.
bool ReadSettingsOf(const OperationContext& context, const Target& target);

/// Whether the window of `target` has not been closed since.
[[nodiscard]] bool IsOpen(const OperationContext& context, const Target& target);

/// Holds the link for an operation, under the hourglass; lets go of both on every way out.
class OperationScope {
 public:
    explicit OperationScope(const OperationContext& context) : context_(context) {
        context_.operations.OperationBusy = True;
        context_.radio.view.SetPointer(Pointer::Hourglass);
    }
    ~OperationScope() {
        context_.radio.view.SetPointer(Pointer::Normal);
        context_.operations.OperationBusy = False;
        context_.radio.status.End();
    }
    OperationScope(const OperationScope&) = delete;
    OperationScope& operator=(const OperationScope&) = delete;

 private:
    const OperationContext& context_;
};

/// Shows which window an operation is for while it runs under the walk.
class WalkStep {
 public:
    WalkStep(const OperationContext& context, int slot) : context_(context) {
        context_.operations.ForAllActive = True;
        context_.operations.ForAllWindow = static_cast<std::int16_t>(slot);
        context_.radio.view.SetPointer(Pointer::Hourglass);
    }
    ~WalkStep() {
        context_.radio.view.SetPointer(Pointer::Normal);
        context_.operations.ForAllActive = False;
        context_.radio.status.End();
    }
    WalkStep(const WalkStep&) = delete;
    WalkStep& operator=(const WalkStep&) = delete;

 private:
    const OperationContext& context_;
};

/// Runs `work` on the window that is active, its radio selected. A fault ends the operation as a
/// failure does.
template <typename Work>
void OnActiveWindow(const OperationContext& context, Work work) {
    const OperationScope scope(context);
    const Target target = ActiveWindow(context);
    try {
        if (SelectRadioOf(context, target)) {
            work(target);
        }
    } catch (const Fault&) {
        return;
    }
}

/// What an operation does with a window whose radio is selected; True if it succeeded, which only
/// a walk over all windows asks.
using OperationWork = bool (*)(const OperationContext& context, const Target& target);

/// Starts an operation of a button or menu row: nothing happens unless its guard lets it.
void StartOnActiveWindow(const OperationContext& context, OperationWork work);

#endif  // ORVIA_CONSOLE_OPERATION_SHAPE_H
