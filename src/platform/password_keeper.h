#ifndef ORVIA_PLATFORM_PASSWORD_KEEPER_H
#define ORVIA_PLATFORM_PASSWORD_KEEPER_H

#include <functional>
#include <optional>
#include <string>

/// What a keeper of passwords answers.
struct KeeperAnswer {
    bool Done = false;
    std::string Password = {};  ///< that was asked for; empty if none is kept
    std::string Words = {};     ///< why it is not done
};

/// Where the user's desktop keeps passwords. All is told later, from inside the events.
class PasswordKeeper {
 public:
    using Told = std::function<void(const KeeperAnswer&)>;

    virtual ~PasswordKeeper() = default;

    /// Why none can be kept by this program; nothing if some can.
    [[nodiscard]] virtual std::optional<std::string> WhyNot() const = 0;
    /// Asks for the password that is kept under a name.
    virtual void Ask(const std::string& name, Told told) = 0;
    /// Keeps a password under that name in the place of the one that was.
    virtual void Keep(const std::string& name, const std::string& password, Told told) = 0;
};

#endif  // ORVIA_PLATFORM_PASSWORD_KEEPER_H
