#include "platform/qt/line_settings.h"

#include <QStringList>
#include <array>
#include <cstdint>

#include "common/fault.h"
#include "common/number_text.h"
#include "platform/qt/text_qt.h"

namespace {

template <typename T>
struct Word {
    const char* Text;
    T Value;
};

constexpr std::array<Word<QSerialPort::Parity>, 5> Parities{{{"N", QSerialPort::NoParity},
                                                             {"E", QSerialPort::EvenParity},
                                                             {"O", QSerialPort::OddParity},
                                                             {"M", QSerialPort::MarkParity},
                                                             {"S", QSerialPort::SpaceParity}}};
constexpr std::array<Word<QSerialPort::DataBits>, 4> DataBits{{{"5", QSerialPort::Data5},
                                                               {"6", QSerialPort::Data6},
                                                               {"7", QSerialPort::Data7},
                                                               {"8", QSerialPort::Data8}}};
constexpr std::array<Word<QSerialPort::StopBits>, 3> StopBits{{{"1", QSerialPort::OneStop},
                                                               {"1.5", QSerialPort::OneAndHalfStop},
                                                               {"2", QSerialPort::TwoStop}}};

template <typename Words, typename T>
bool Find(const Words& words, const QString& text, T& value) {
    for (const auto& word : words) {
        if (text == QLatin1String(word.Text)) {
            value = word.Value;
            return true;
        }
    }
    return false;
}

bool ReadBaudRate(const QString& text, qint32& rate) {
    std::int32_t value = 0;
    const bool read = TextToLong(FromQt(text), value) && value > 0;
    rate = read ? value : rate;
    return read;
}

}  // namespace

LineSettings ReadLineSettings(const std::string& text) {
    const QStringList parts = ToQt(text).toUpper().split(QLatin1Char(','));
    LineSettings settings;
    const bool read = parts.size() == 4 && ReadBaudRate(parts[0], settings.BaudRate) &&
                      Find(Parities, parts[1], settings.Parity) &&
                      Find(DataBits, parts[2], settings.DataBits) &&
                      Find(StopBits, parts[3], settings.StopBits);
    if (!read) {
        throw Fault("port settings \"" + text + "\" are not valid");
    }
    return settings;
}
