#include "collect/collect_settings.h"

#include <string>

namespace {

const std::string Section = "Collect";
constexpr const char* ScopeKey = "Scope";
constexpr const char* SyncKey = "SyncTime";
constexpr const char* BookText = "Book";
constexpr const char* WindowsText = "Windows";

}  // namespace

CollectChoice ReadCollectChoice(const SettingsStore& store) {
    return {.Scope = store.Read(Section, ScopeKey) == BookText ? CollectScope::WholeBook
                                                               : CollectScope::Windows,
            .SyncTime = store.Read(Section, SyncKey) == "1"};
}

void KeepCollectChoice(const CollectChoice& choice, SettingsStore& store) {
    store.Write(Section, ScopeKey,
                choice.Scope == CollectScope::WholeBook ? BookText : WindowsText);
    store.Write(Section, SyncKey, choice.SyncTime ? "1" : "0");
}
