#include "setup/setup_operation.h"

#include "console/operation_shape.h"

namespace {

/// Reads what the logger holds now. The idle limit may have closed the port behind the dialog; the
/// end of the program has closed it for good.
void ReadAgain(const OperationContext& context, const Target& target,
               const std::function<bool()>& reselect) {
    if (context.radio.link.ShuttingDown != False) {
        return;
    }
    context.operations.OperationBusy = True;
    context.radio.view.SetPointer(Pointer::Hourglass);
    if (context.radio.link.LinkState != LinkDisconnected || reselect()) {
        ReadSettingsOf(context, target);
    }
}

}  // namespace

void Setup(const OperationContext& context,
           const std::function<void(const std::function<bool()>& reselect)>& show) {
    if (!MayStart(context)) {
        return;
    }
    OnActiveWindow(context, [&](const Target& target) {
        ClientWindow& window = *target.Window;
        const bool read = ReadSettingsOf(context, target);
        if (!IsOpen(context, target)) {
            return;
        }
        if (!read) {
            context.radio.status.Came(
                NameOf(target) + " did not answer: these are not its settings of now", false);
        }
        window.ClientSetGlobalState();
        context.radio.view.SetPointer(Pointer::Normal);
        // By the radio that was read, whatever becomes of the entry.
        const std::function<bool()> reselect = [&] { return SelectRadioOf(context, target); };
        show(reselect);
        ReadAgain(context, target, reselect);
    });
}
