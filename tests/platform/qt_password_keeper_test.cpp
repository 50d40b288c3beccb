#include "platform/qt/qt_password_keeper.h"

#include <gtest/gtest.h>

#include "support/qt/run_events.h"

namespace testing_support {
namespace {

/// Nobody keeps passwords on a bus that is not there.
class NoSessionBus {
 public:
    NoSessionBus() : before_(qgetenv("DBUS_SESSION_BUS_ADDRESS")) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
    }
    ~NoSessionBus() {
        before_.isNull() ? qunsetenv("DBUS_SESSION_BUS_ADDRESS")
                         : qputenv("DBUS_SESSION_BUS_ADDRESS", before_);
    }
    NoSessionBus(const NoSessionBus&) = delete;
    NoSessionBus& operator=(const NoSessionBus&) = delete;

 private:
    const QByteArray before_;
};

class QtPasswordKeeperTest : public ::testing::Test {
 protected:
    /// What is told of a question, later and once.
    template <typename Question>
    [[nodiscard]] KeeperAnswer AnswerTo(Question question) {
        int answers = 0;
        KeeperAnswer answer;
        question([&](const KeeperAnswer& told) {
            ++answers;
            answer = told;
        });
        EXPECT_EQ(answers, 0) << "told before the events run";
        EXPECT_TRUE(RunEventsUntil([&] { return answers > 0; }));
        EXPECT_EQ(answers, 1);
        return answer;
    }

    const NoSessionBus bus_;
    QtPasswordKeeper keeper_;
};

TEST_F(QtPasswordKeeperTest, WithoutAKeyringItSaysWhy) {
    const auto asked = AnswerTo([this](auto told) { keeper_.Ask("me@here:1/base", told); });
    EXPECT_FALSE(asked.Done);
    EXPECT_FALSE(asked.Words.empty());
    EXPECT_EQ(asked.Password, "");
    const auto kept = AnswerTo([this](auto told) { keeper_.Keep("me@here:1/base", "x", told); });
    EXPECT_FALSE(kept.Done);
    EXPECT_FALSE(kept.Words.empty());
    if (const auto whyNot = keeper_.WhyNot()) {
        EXPECT_EQ(kept.Words, *whyNot);
    }
}

}  // namespace
}  // namespace testing_support
