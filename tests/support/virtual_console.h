#ifndef ORVIA_TESTS_SUPPORT_VIRTUAL_CONSOLE_H
#define ORVIA_TESTS_SUPPORT_VIRTUAL_CONSOLE_H

#include <memory>
#include <string>

#include "app/contexts.h"
#include "app/shared_state.h"
#include "console/book_operations.h"
#include "console/for_all.h"
#include "console/logger_operations.h"
#include "link/connecting.h"
#include "link/sampling.h"
#include "link/server_radio.h"
#include "link/supervision.h"
#include "support/fake_client_window.h"
#include "support/fake_main_view.h"
#include "support/fake_walk_log.h"
#include "support/virtual_host.h"

namespace testing_support {

/// The console without windows, on the virtual host, both of its timers running.
class VirtualConsole {
 public:
    /// With an archive if there is one to keep what is uploaded.
    explicit VirtualConsole(const std::string& appPath = "/nowhere",
                            ArchiveStore* archive = nullptr);

    // What the procedures take.
    [[nodiscard]] comm::LinkContext Radio() const { return Make.Radio(); }
    [[nodiscard]] comm::SupervisionContext Supervision() const { return Make.Supervision(); }
    [[nodiscard]] comm::SamplingContext Machines() const { return Make.Machines(); }
    [[nodiscard]] comm::ToggleContext Toggling() const { return Make.Toggling(); }
    [[nodiscard]] BookContext BookWork() const { return Make.Book(); }
    [[nodiscard]] OperationContext Operation() { return Make.Operation(Log); }
    [[nodiscard]] CollectContext Collection() { return Make.Collection(Log); }
    [[nodiscard]] ForAllContext ForAll() { return {.operation = Operation(), .log = Log}; }

    /// Opens the port and has the server radio answered, in command mode.
    void Connect();

    /// Adds a logger to the network and its radio to book and list; gives the entry's number.
    int AddSite(const simulator::LoggerSetup& setup);

    /// Opens the window of an entry and makes it the active one.
    std::shared_ptr<FakeClientWindow> OpenWindow(int entry);

    VirtualHost Outside;
    SharedState State;
    FakeMainView View;
    FakeWalkLog Log;
    Contexts Make{State, View};
};

/// A logger with `analog` and `pulse` channels, named and addressed by `number`.
[[nodiscard]] simulator::LoggerSetup BasicSite(int number, int analog = 8, int pulse = 2);

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_VIRTUAL_CONSOLE_H
