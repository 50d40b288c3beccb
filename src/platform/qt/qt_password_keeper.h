#ifndef ORVIA_PLATFORM_QT_QT_PASSWORD_KEEPER_H
#define ORVIA_PLATFORM_QT_QT_PASSWORD_KEEPER_H

#include "platform/password_keeper.h"

/// The keyring of the user's desktop, where the program was built with what reaches it.
class QtPasswordKeeper final : public PasswordKeeper {
 public:
    [[nodiscard]] std::optional<std::string> WhyNot() const override;
    void Ask(const std::string& name, Told told) override;
    void Keep(const std::string& name, const std::string& password, Told told) override;
};

#endif  // ORVIA_PLATFORM_QT_QT_PASSWORD_KEEPER_H
