#ifndef ORVIA_TESTS_SUPPORT_FAKE_SHARED_ARCHIVE_H
#define ORVIA_TESTS_SUPPORT_FAKE_SHARED_ARCHIVE_H

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/password_keeper.h"
#include "platform/shared_archive.h"

namespace testing_support {

/// A shared archive that stands as it is told to, and notes what is asked of it.
class FakeSharedArchive final : public SharedArchive {
 public:
    struct Entered {
        ServerPlace Place;
        std::string Password;
        std::string Identity = {};
    };

    std::optional<std::string> WhyNot() const override { return Missing; }
    void Share(const ServerPlace& place, const std::string& password,
               const std::string& identity) override {
        Shared.push_back({place, password, identity});
        Now.State = SharingState::Begins;
    }
    void Cease() override {
        ++Ceased;
        Now = {};
    }
    SharingStatus Status() const override { return Now; }
    void Look() override { ++Looks; }
    void HandOverAgain() override { ++Agains; }
    void Try(const ServerPlace& place, const std::string& password) override {
        Tries.push_back({place, password});
    }
    std::optional<SharingTrial> Tried() override { return std::exchange(Trial, std::nullopt); }
    void ForgetTry() override {
        ++Forgotten;
        Trial.reset();
    }
    std::shared_ptr<ArchiveStore> Store() const override { return Kept; }

    std::optional<std::string> Missing;
    SharingStatus Now;
    std::optional<SharingTrial> Trial;
    std::shared_ptr<ArchiveStore> Kept;
    std::vector<Entered> Shared;
    std::vector<Entered> Tries;
    int Ceased = 0;
    int Looks = 0;
    int Agains = 0;
    int Forgotten = 0;
};

/// A keyring that answers when it is told to.
class FakeKeeper final : public PasswordKeeper {
 public:
    std::optional<std::string> WhyNot() const override { return Missing; }
    void Ask(const std::string& name, Told told) override {
        Questions.emplace_back([this, name, told = std::move(told)] {
            told(Trouble ? KeeperAnswer{.Words = *Trouble}
                         : KeeperAnswer{.Done = true, .Password = Passwords[name]});
        });
    }
    void Keep(const std::string& name, const std::string& password, Told told) override {
        Questions.emplace_back([this, name, password, told = std::move(told)] {
            if (Trouble) {
                told({.Words = *Trouble});
                return;
            }
            Passwords[name] = password;
            told({.Done = true});
        });
    }
    /// Answers all that was asked so far.
    void Answer() {
        for (; !Questions.empty(); Questions.pop_front()) {
            Questions.front()();
        }
    }

    std::optional<std::string> Missing;
    std::optional<std::string> Trouble;
    std::map<std::string, std::string> Passwords;
    std::deque<std::function<void()>> Questions;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_FAKE_SHARED_ARCHIVE_H
