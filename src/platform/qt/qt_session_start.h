#ifndef ORVIA_PLATFORM_QT_QT_SESSION_START_H
#define ORVIA_PLATFORM_QT_QT_SESSION_START_H

#include <QString>

#include "platform/host.h"

/// The program's argument when a session starts it.
inline constexpr const char* AtStartArgument = "--at-start";

#ifdef _WIN32
/// A value of the user's Run key.
class QtSessionStart final : public SessionStart {
 public:
    explicit QtSessionStart(const QString& program) : program_(program) {}

    [[nodiscard]] bool IsOn() const override;
    [[nodiscard]] bool Switch(bool on) override;

 private:
    const QString program_;
};
#else
/// A desktop entry in the user's folder of such entries.
class QtSessionStart final : public SessionStart {
 public:
    /// `program` is the whole path of the program; `folder` is ".../autostart", and may be missing.
    QtSessionStart(const QString& program, const QString& folder)
        : program_(program), folder_(folder) {}

    [[nodiscard]] bool IsOn() const override;
    [[nodiscard]] bool Switch(bool on) override;

 private:
    [[nodiscard]] QString File() const;

    const QString program_;
    const QString folder_;
};
#endif

#endif  // ORVIA_PLATFORM_QT_QT_SESSION_START_H
