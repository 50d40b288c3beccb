#include "common/desktop_entry.h"

#include <gtest/gtest.h>

namespace {

TEST(SessionEntry, NamesTheProgramAndItsArgument) {
    EXPECT_EQ(SessionEntry("Orvia", "/usr/lib/orvia/orvia", "--at-start"),
              "[Desktop Entry]\nType=Application\nName=Orvia\n"
              "Exec=\"/usr/lib/orvia/orvia\" --at-start\n"
              "X-GNOME-Autostart-enabled=true\n");
}

TEST(SessionEntry, NoCharacterOfThePathIsTakenForMoreThanItself) {
    EXPECT_NE(SessionEntry("Orvia", "/a b/$(x)`y`\"z\"\\100%", "-s")
                  .find("Exec=\"/a b/\\\\$(x)\\\\`y\\\\`\\\\\"z\\\\\"\\\\\\\\100%%\" -s\n"),
              std::string::npos);
}

}  // namespace
