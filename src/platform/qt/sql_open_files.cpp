#include "platform/qt/sql_open_files.h"

#include <QHash>
#include <mutex>

namespace {

struct OpenFiles {
    std::mutex Mutex;
    QHash<QString, int> Connections;
};

/// Stays for a thread that ends behind the program's own end.
OpenFiles& All() {
    static OpenFiles& files = *new OpenFiles;
    return files;
}

}  // namespace

void AddOpenFile(const QString& file) {
    const std::lock_guard lock(All().Mutex);
    ++All().Connections[file];
}

void RemoveOpenFile(const QString& file) {
    const std::lock_guard lock(All().Mutex);
    if (--All().Connections[file] == 0) {
        All().Connections.remove(file);
    }
}

void LookIntoUnusedFile(const QString& file, const std::function<void()>& look) {
    const std::lock_guard lock(All().Mutex);
    if (!All().Connections.contains(file)) {
        look();
    }
}
