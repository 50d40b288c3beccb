#include "platform/win/win_text.h"

#include <windows.h>

#include <array>

#include "common/number_text.h"
#include "common/text.h"

std::wstring ToWide(std::string_view text) {
    const auto size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), length);
    return wide;
}

std::string FromWide(std::wstring_view text) {
    const auto size = static_cast<int>(text.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

std::string SystemErrorText(unsigned long error) {
    constexpr DWORD Room = 512;
    std::array<wchar_t, Room> text{};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, error, 0, text.data(), Room, nullptr);
    const std::string said = FromWide({text.data(), length});
    std::string_view line(said);
    line = line.substr(0, line.find_first_of("\r\n"));
    return line.empty() ? "error " + IntegerToText(static_cast<std::int64_t>(error))
                        : std::string(Trim(line));
}
