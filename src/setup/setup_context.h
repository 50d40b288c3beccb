#ifndef ORVIA_SETUP_SETUP_CONTEXT_H
#define ORVIA_SETUP_SETUP_CONTEXT_H

#include <functional>
#include <string>
#include <utility>

#include "common/bytes.h"
#include "flow/catalogues.h"
#include "logger/frame_exchange.h"
#include "logger/logger_state.h"
#include "platform/host.h"
#include "records/link.h"
#include "records/operation_status.h"
#include "records/operations_state.h"
#include "records/sampling_state.h"
#include "records/settings.h"
#include "setup/setup_view.h"

/// What lives as long as the dialog is open.
struct SetupDialog {
    std::string CurrentFile;  ///< name, without folder, of the set-up file last chosen
    Bytes FileImage;          ///< settings image as last loaded or saved
    Bytes LoggerImage;        ///< settings image as the logger had it when last compared
    /// A programming failed: some of it may have reached the logger, which no longer holds
    /// `LoggerImage` for certain.
    Flag LoggerUncertain = False;
    Flag UnloadRuns = False;  ///< the questions of closing are being asked
};

/// What the dialog is opened on.
struct SetupRecords {
    LoggerState& global;
    Settings& settings;
    const Catalogues& catalogues;
    const Link& link;
    const Sampling& sampling;
    Operations& operations;
    FrameExchange& exchange;
    OperationStatus& status;
    const Host& outside;
    std::string version;        ///< of the program, for set-up files
    Flag showBaudRate = False;  ///< the fixed baud rate is shown
};

/// What the procedures of the dialog work on: what it was opened on, and what it made for itself.
struct SetupContext : SetupRecords {
    SetupContext(const SetupRecords& records, std::function<bool()> toLogger, SetupView& form,
                 SetupDialog& lasting)
        : SetupRecords(records), reselect(std::move(toLogger)), view(form), dialog(lasting) {}

    /// Brings the server radio back to the logger's radio, after the idle limit closed the port.
    std::function<bool()> reselect;
    SetupView& view;
    SetupDialog& dialog;
};

/// Interval of the dialogs' timers, a quarter of a second, by the length of a tick.
[[nodiscard]] constexpr int QuarterSecond(int TickMilliseconds) {
    return TickMilliseconds * 5 / 2;
}

/// Whether the dialog may use the link, or change what an exchange on it works on.
[[nodiscard]] inline bool SetupIsFree(const SetupContext& context) {
    return context.operations.OperationBusy == False;
}

/// Whether the logger can be reached for a command of the dialog.
[[nodiscard]] inline bool LoggerIsFree(const SetupContext& context) {
    return SetupIsFree(context) && context.sampling.ContinuousMode == SamplingIdle &&
           context.link.Connected != False;
}

#endif  // ORVIA_SETUP_SETUP_CONTEXT_H
