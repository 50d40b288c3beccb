#ifndef ORVIA_PLATFORM_QT_SQL_CHECKPOINTS_H
#define ORVIA_PLATFORM_QT_SQL_CHECKPOINTS_H

#include <QString>
#include <condition_variable>
#include <mutex>
#include <thread>

/// Brings what was committed from the log into the archive's file, on a thread of its own: there
/// the disk may take its time. Without it the log would only grow.
class SqlCheckpoints {
 public:
    explicit SqlCheckpoints(QString file);
    /// Waits for one that runs.
    ~SqlCheckpoints();
    SqlCheckpoints(const SqlCheckpoints&) = delete;
    SqlCheckpoints& operator=(const SqlCheckpoints&) = delete;

    /// Has one made soon.
    void Ask();

 private:
    void Run();
    void RunAsked();
    [[nodiscard]] bool AwaitAsked();

    const QString file_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool asked_ = false;
    bool ends_ = false;
    std::thread thread_;  // the last: it uses the others
};

#endif  // ORVIA_PLATFORM_QT_SQL_CHECKPOINTS_H
