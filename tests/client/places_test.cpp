// Where every control of every display mode stands. tests/client/places.txt is the drawing that
// operators know; a change of it is a decision, never an accident.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "client/layout.h"
#include "client_fixture.h"

namespace client_test {
namespace {

constexpr std::array<const char*, 3> Sides{"left", "centre", "right"};

std::string LineOf(const std::string& name, const PanelControl& control) {
    std::ostringstream line;
    line << name << ' ' << control.Place.Left << ' ' << control.Place.Top << ' '
         << control.Place.Width << ' ' << control.Place.Height << ' '
         << Sides.at(static_cast<std::size_t>(control.Align)) << (control.Wraps ? " wraps" : "")
         << (control.Visible ? "" : " hidden");
    return line.str();
}

class Places : public ClientTest {
 protected:
    std::vector<std::string> DrawingOf(std::int16_t mode) {
        window.ChooseDisplay(mode);
        const ModeSize& size = SizeOfMode(mode);
        std::ostringstream head;
        head << "mode " << mode << ' ' << size.Width << ' ' << size.Height << ' '
             << size.ContentWidth << ' ' << size.ContentHeight;
        std::vector<std::string> lines{head.str()};
        ClientPanel panel = Shown();
        for (const ControlRow& row : ClientControls()) {
            int index = 0;
            for (const PanelControl& control : row.Of(panel)) {
                lines.push_back(LineOf(ControlName(row, index), control));
                ++index;
            }
        }
        return lines;
    }
    std::vector<std::string> Drawing() {
        std::vector<std::string> lines;
        for (std::int16_t mode = DisplaySmall; mode <= DisplayFlow; ++mode) {
            const std::vector<std::string> drawing = DrawingOf(mode);
            lines.insert(lines.end(), drawing.begin(), drawing.end());
        }
        return lines;
    }
};

TEST_F(Places, StandAsOperatorsKnowThem) {
    std::ifstream file(ORVIA_CLIENT_TESTS "/places.txt");
    std::vector<std::string> known;
    for (std::string line; std::getline(file, line);) {
        known.push_back(line);
    }
    const std::vector<std::string> drawing = Drawing();
    ASSERT_EQ(drawing.size(), known.size());
    const std::string now = testing::TempDir() + "places.txt";
    std::ofstream out(now);
    std::string mode;
    for (std::size_t i = 0; i < known.size(); ++i) {
        out << drawing[i] << '\n';
        mode = known[i].starts_with("mode") ? known[i] : mode;
        EXPECT_EQ(drawing[i], known[i]) << mode << "; the whole drawing is now in " << now;
    }
}

// What a mode has no use for is hidden and keeps its old place; the frame of the flow parameters
// stays once it was shown.
TEST_F(Places, OfWhatIsSeenAreTheSameWhateverModeWasBefore) {
    const auto seen = [this](std::int16_t mode) {
        std::vector<std::string> lines = DrawingOf(mode);
        std::erase_if(lines, [](const std::string& line) {
            return line.ends_with(" hidden") || line.starts_with("fraFlowMode ");
        });
        return lines;
    };
    for (std::int16_t mode = DisplaySmall; mode <= DisplayFlow; ++mode) {
        const std::vector<std::string> known = seen(mode);
        for (std::int16_t before = DisplaySmall; before <= DisplayFlow; ++before) {
            window.ChooseDisplay(before);
            const std::vector<std::string> now = seen(mode);
            ASSERT_EQ(now.size(), known.size()) << "mode " << mode << " after " << before;
            for (std::size_t i = 0; i < known.size(); ++i) {
                EXPECT_EQ(now[i], known[i]) << "mode " << mode << " after " << before;
            }
        }
    }
}

}  // namespace
}  // namespace client_test
