#include "app/help_pages.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

using HelpPage = std::pair<std::string_view, std::string_view>;

constexpr std::string_view Contents = "index.html";

// By the name of a window, or of a part that has a page of its own.
constexpr std::array<HelpPage, 30> Pages{{
    {"frmMain", "main-window.html"},
    {"frmSplash", "about.html"},
    {"frmAbout", "about.html"},
    {"frmConnect", "connect.html"},
    {"frmConnectSetup", "connection-settings.html"},
    {"frmAddClient1", "add-client.html"},
    {"frmAddClient2", "add-client.html"},
    {"frmEditClient", "edit-client.html"},
    {"frmSelectClient", "select-client.html"},
    {"frmClient", "client-window.html"},
    {"frmSignalLevel", "signal-level.html"},
    {"frmLog", "operation-log.html"},
    {"frmGetHistoryData", "get-history.html"},
    {"frmProgress", "history-viewer.html"},
    {"frmHistory", "history-viewer.html"},
    {"frmHistoryOptions", "history-options.html"},
    {"frmSetup", "setup.html"},
    {"Frames(0)", "setup-analog.html"},
    {"Frames(1)", "setup-digital.html"},
    {"Frames(2)", "setup-general.html"},
    {"Frames(3)", "setup-flow.html"},
    {"frmCalibrate", "calibrate.html"},
    {"frmRating", "flow-table-window.html"},
    {"frmCollect", "collect.html"},
    {"frmArchive", "archive.html"},
    {"frmArchiveSettings", "archive-settings.html"},
    {"frmPlot", "plot.html"},
    {"frmReport", "report.html"},
    {"frmTrace", "trace.html"},
    {"frmSupport", "support.html"},
}};

}  // namespace

std::string_view HelpPageOf(std::string_view name) {
    const auto found = std::find_if(Pages.begin(), Pages.end(),
                                    [name](const HelpPage& page) { return page.first == name; });
    return found == Pages.end() ? std::string_view() : found->second;
}

std::string_view HelpPageAt(std::span<const std::string> names) {
    for (const std::string& name : names) {
        if (const std::string_view page = HelpPageOf(name); !page.empty()) {
            return page;
        }
    }
    return Contents;
}
