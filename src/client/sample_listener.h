#ifndef ORVIA_CLIENT_SAMPLE_LISTENER_H
#define ORVIA_CLIENT_SAMPLE_LISTENER_H

class ClientModel;

/// Hears of the samples that reach client windows. Nothing that it does shows in a window: it
/// neither waits nor faults.
class SampleListener {
 public:
    virtual ~SampleListener() = default;

    /// A window was opened.
    virtual void Opened(const ClientModel& window) = 0;
    /// An open window has filed its newest sample, which may be none.
    virtual void Sampled(const ClientModel& window) = 0;
    /// The window is closed: nothing is heard of it any more.
    virtual void Closed(const ClientModel& window) = 0;
};

#endif  // ORVIA_CLIENT_SAMPLE_LISTENER_H
