#ifndef ORVIA_TESTS_SUPPORT_FAKE_WALK_LOG_H
#define ORVIA_TESTS_SUPPORT_FAKE_WALK_LOG_H

#include <string>
#include <vector>

#include "console/operation_log.h"

namespace testing_support {

/// A log window without a screen.
class FakeWalkLog final : public WalkLog {
 public:
    void AppendLog(const std::string& text) override {
        if (Open) {
            Text += text;
        }
    }
    void OpenLog() override {
        ++Opened;
        Open = true;
        Text.clear();
        Cancel = false;
        ButtonCloses = false;
    }
    bool LogWindowOpen() const override { return Open; }
    bool CancelRequested() const override { return Cancel; }
    void SetFoot(const std::string& text) override {
        if (Open && text != Foot) {
            Foot = text;
            Feet.push_back(text);
        }
    }
    void EndLog() override {
        if (Open) {
            ButtonCloses = true;
        }
    }

    bool Open = false;
    bool Cancel = false;
    bool ButtonCloses = false;
    int Opened = 0;
    std::string Text;
    std::string Foot;
    std::vector<std::string> Feet;  ///< all that it told, one behind the other
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_FAKE_WALK_LOG_H
