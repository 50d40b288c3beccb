#ifndef ORVIA_CLIENT_CLIENT_CONTEXT_H
#define ORVIA_CLIENT_CLIENT_CONTEXT_H

#include "client/client_popup.h"
#include "flow/catalogues.h"
#include "logger/data_point.h"
#include "logger/frame_exchange.h"
#include "logger/logger_state.h"
#include "platform/host.h"
#include "records/main_view.h"
#include "records/sampling_state.h"

struct AddressBook;
struct ClientWindows;
class SampleListener;

/// What a client window knows of the rest of the console. All of it outlives every window.
struct ClientContext {
    ClientWindows& Windows;
    AddressBook& Book;
    LoggerState& Global;      ///< the current logger
    const DataPoint& Newest;  ///< the newest sample, of the logger just sampled
    const Catalogues& Devices;
    const Sampling& Cycles;  ///< the running sampling mode, for the menu's caption
    FrameExchange& Exchange;
    Host& Outside;
    MainView& View;
    ClientPopup& Popup;
    SampleListener* Samples = nullptr;  ///< hears of samples, if there is one
};

#endif  // ORVIA_CLIENT_CLIENT_CONTEXT_H
