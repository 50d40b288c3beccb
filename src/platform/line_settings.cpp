#include "platform/line_settings.h"

#include <array>
#include <string_view>

#include "common/fault.h"
#include "common/number_text.h"
#include "common/text.h"

namespace {

template <typename T>
struct Word {
    std::string_view Text;
    T Value;
};

constexpr std::array<Word<LineParity>, 5> Parities{{{"N", LineParity::None},
                                                    {"E", LineParity::Even},
                                                    {"O", LineParity::Odd},
                                                    {"M", LineParity::Mark},
                                                    {"S", LineParity::Space}}};
constexpr std::array<Word<int>, 4> DataBits{{{"5", 5}, {"6", 6}, {"7", 7}, {"8", 8}}};
constexpr std::array<Word<LineStopBits>, 3> StopBits{
    {{"1", LineStopBits::One}, {"1.5", LineStopBits::OneAndHalf}, {"2", LineStopBits::Two}}};

template <typename Words, typename T>
bool Find(const Words& words, std::string_view text, T& value) {
    for (const auto& word : words) {
        if (text == word.Text) {
            value = word.Value;
            return true;
        }
    }
    return false;
}

bool ReadBaudRate(std::string_view text, std::int32_t& rate) {
    std::int32_t value = 0;
    const bool read = TextToLong(text, value) && value > 0;
    rate = read ? value : rate;
    return read;
}

constexpr std::size_t PartCount = 4;

/// The parts between the commas; what stands behind a fourth comma counts as a part too many.
bool Split(std::string_view text, std::array<std::string_view, PartCount>& parts) {
    for (std::size_t i = 0; i < PartCount; ++i) {
        const std::size_t comma = text.find(',');
        const bool last = i + 1 == PartCount;
        if (last != (comma == std::string_view::npos)) {
            return false;
        }
        parts[i] = text.substr(0, comma);
        text.remove_prefix(last ? text.size() : comma + 1);
    }
    return true;
}

}  // namespace

LineSettings ReadLineSettings(const std::string& text) {
    const std::string upper = ToUpper(text);
    std::array<std::string_view, PartCount> parts;
    LineSettings settings;
    const bool read = Split(upper, parts) && ReadBaudRate(parts[0], settings.BaudRate) &&
                      Find(Parities, parts[1], settings.Parity) &&
                      Find(DataBits, parts[2], settings.DataBits) &&
                      Find(StopBits, parts[3], settings.StopBits);
    if (!read) {
        throw Fault("port settings \"" + text + "\" are not valid");
    }
    return settings;
}
