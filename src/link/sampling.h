#ifndef ORVIA_LINK_SAMPLING_H
#define ORVIA_LINK_SAMPLING_H

#include "link/server_radio.h"
#include "logger/frame_exchange.h"
#include "logger/logger_state.h"
#include "platform/host.h"
#include "records/address_book.h"
#include "records/client_windows.h"
#include "records/link.h"
#include "records/main_view.h"
#include "records/operations_state.h"
#include "records/sampling_state.h"
#include "records/settings.h"

namespace comm {

/// What the sampling machines work on.
struct SamplingContext {
    LinkContext radio;
    Sampling& sampling;
    Operations& operations;
    const AddressBook& book;
    const ClientWindows& windows;
    const LoggerState& global;  ///< its channel counts tell how a sample frame lies
    DataPoint& newest;
    FrameExchange& exchange;
    const SystemClock& clock;
};

/// One tick of the sampling timer: a step of the one-shot sample if one is asked for, else of the
/// continuous mode that runs. A step can wait, and is not entered again meanwhile. A fault ends
/// the machines.
void SampleTick(const SamplingContext& context);

/// Starts the one-shot machine with its time limit of 2.5 seconds and the marks of no sample.
void StartSingleSample(Sampling& sampling, DataPoint& newest);

}  // namespace comm

#endif  // ORVIA_LINK_SAMPLING_H
