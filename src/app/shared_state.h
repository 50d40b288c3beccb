#ifndef ORVIA_APP_SHARED_STATE_H
#define ORVIA_APP_SHARED_STATE_H

#include <optional>
#include <string>

#include "archive/archive_sharing.h"
#include "archive/live_series.h"
#include "archive/upload_filer.h"
#include "collect/collect_progress.h"
#include "collect/late_answers.h"
#include "common/flag.h"
#include "flow/catalogues.h"
#include "history/history_store.h"
#include "link/frames.h"
#include "logger/data_point.h"
#include "logger/logger_state.h"
#include "platform/host.h"
#include "records/address_book.h"
#include "records/client_windows.h"
#include "records/diverted_boxes.h"
#include "records/link.h"
#include "records/operation_status.h"
#include "records/operations_state.h"
#include "records/quiet_boxes.h"
#include "records/sampling_state.h"
#include "records/settings.h"
#include "trace/link_recorder.h"

/// The same host, with another port and other boxes.
[[nodiscard]] inline Host HostWith(const Host& host, SerialPort& port, MessageBoxes& boxes) {
    return {.MSComm1 = port,
            .Events = host.Events,
            .Boxes = boxes,
            .Dialogs = host.Dialogs,
            .Store = host.Store,
            .Clock = host.Clock,
            .Help = host.Help,
            .LocalMachine = host.LocalMachine,
            .Inquiry = host.Inquiry,
            .Sound = host.Sound,
            .AppPath = host.AppPath,
            .TickMilliseconds = host.TickMilliseconds,
            .Archive = host.Archive,
            .SystemText = host.SystemText,
            .SaveFolder = host.SaveFolder,
            .UserFolder = host.UserFolder,
            .Commands = host.Commands,
            .AtStart = host.AtStart,
            .Shared = host.Shared,
            .Passwords = host.Passwords};
}

/// All that the console's procedures share. main() makes the one there is; windows are handed a
/// reference, and a procedure gets just the records that it may touch.
struct SharedState {
    explicit SharedState(const Host& outside)
        : Recorder(outside.MSComm1, outside.Clock),
          LinkRecord(Recorder, outside.Events),
          Late(Recorder),
          Boxes(outside.Boxes, LinkRecord.ShuttingDown),
          Outside(HostWith(outside, Recorder, Boxes)),
          OutsideOfWindows(HostWith(outside, Recorder, WindowBoxes)),
          Status(outside.Clock),
          Exchange(LinkRecord, &Status) {
        LinkRecord.Listener = &Late;
        if (Outside.Archive != nullptr) {
            Filer.emplace(*Outside.Archive, Boxes);
            Filer->Filed = [this] { Sharing.Filed(); };
        }
    }
    SharedState(const SharedState&) = delete;
    SharedState& operator=(const SharedState&) = delete;

    Flag ErrorTrapping = True;  ///< never changed; see WriteVersionFile
    Flag ShowBaudRate = False;  ///< never set: the set-up does not show the fixed baud rate
    Settings SettingsRecord;
    LinkRecorder Recorder;  ///< between the link and its port
    Link LinkRecord;
    LateAnswers Late;
    Sampling SamplingRecord;
    Operations OperationsRecord;
    AddressBook Book;
    ClientWindows Windows;
    Catalogues CataloguesRecord;
    LoggerState Logger;  ///< the current logger: the global copy
    DataPoint Newest;    ///< the newest sample
    HistoryStore History;
    std::string LastHistoryFolder;  ///< of the last history file saved, empty at start
    QuietBoxes Boxes;
    Host Outside;                      ///< the host, its boxes made quiet for the end
    DivertedBoxes WindowBoxes{Boxes};  ///< through which client windows tell
    Host OutsideOfWindows;             ///< the host of client windows
    OperationStatus Status;
    LinkFrames Exchange;
    LiveSeries Live{Outside.Clock};  ///< the last hour's readings of the open windows
    CollectProgress Collecting;      ///< of the collection that the operator follows
    ArchiveSharing Sharing{Outside, Status};
    std::optional<UploadFiler> Filer;  ///< files every upload, if there is an archive
};

#endif  // ORVIA_APP_SHARED_STATE_H
