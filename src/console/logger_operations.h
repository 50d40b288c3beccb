#ifndef ORVIA_CONSOLE_LOGGER_OPERATIONS_H
#define ORVIA_CONSOLE_LOGGER_OPERATIONS_H

#include "console/operation_log.h"
#include "link/server_radio.h"
#include "logger/frame_exchange.h"
#include "logger/logger_state.h"
#include "platform/host.h"
#include "records/address_book.h"
#include "records/client_windows.h"
#include "records/operations_state.h"
#include "records/sampling_state.h"

/// What an operation on one logger works on.
struct OperationContext {
    comm::LinkContext radio;
    Sampling& sampling;
    Operations& operations;
    const AddressBook& book;
    const ClientWindows& windows;
    const LoggerState& global;
    DataPoint& newest;
    FrameExchange& exchange;
    const SystemClock& clock;
    OperationLog& log;
};

struct Target;

// Each acts on the logger whose window is the active one, and does nothing, without a word, while
// another operation or a sampling mode runs, while the link is not connected, or with no window
// open. OperationBusy is clear again on every way out.

/// "Get Sample": reads the logger's settings, then one sample.
void GetSample(const OperationContext& context);

/// The same on a window whose radio is selected. True if the settings could be read, whatever
/// became of the sample.
[[nodiscard]] bool GetSampleOf(const OperationContext& context, const Target& target);

/// "Sample Continuously": starts one sample a second, or stops the sampling mode that runs.
void SampleContinuously(const OperationContext& context);

/// "Firmware Version": reads the settings and tells the version.
void ShowFirmwareVersion(const OperationContext& context);

#endif  // ORVIA_CONSOLE_LOGGER_OPERATIONS_H
