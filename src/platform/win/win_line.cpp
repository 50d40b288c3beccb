#include "platform/win/win_line.h"

#include <windows.h>

#include <string>

#include "common/fault.h"
#include "platform/com_port.h"
#include "platform/win/win_text.h"

namespace {

constexpr std::size_t ReadSize = 4096;
constexpr DWORD QueueSize = 16384;   // what the driver is asked to keep in either direction
constexpr DWORD EndPatience = 1000;  // milliseconds for a driver to end what it was told to

/// The calls, in the order of their events.
enum Call : std::size_t { WaitCall, ReadCall, WriteCall };

/// What a call that was begun came to, by what the system answered.
bool HasBegun(BOOL answer) {
    return answer != FALSE || GetLastError() == ERROR_IO_PENDING;
}

[[noreturn]] void Refuse(int number, DWORD error) {
    throw Fault(ComPortName(number) + " cannot be opened: " + SystemErrorText(error));
}

void SetLine(DCB& line, const LineSettings& settings) {
    const ComLineCodes codes = ComLineCodesOf(settings);
    line.BaudRate = codes.BaudRate;
    line.ByteSize = codes.DataBits;
    line.Parity = codes.Parity;
    line.StopBits = codes.StopBits;
    line.fBinary = TRUE;
    line.fParity = settings.Parity == LineParity::None ? FALSE : TRUE;
    line.fDtrControl = DTR_CONTROL_DISABLE;
    line.fRtsControl = RTS_CONTROL_DISABLE;
    line.fOutxCtsFlow = FALSE;
    line.fOutxDsrFlow = FALSE;
    line.fDsrSensitivity = FALSE;
    line.fOutX = FALSE;
    line.fInX = FALSE;
    line.fNull = FALSE;
    line.fErrorChar = FALSE;
    line.fAbortOnError = FALSE;
}

}  // namespace

/// All that the system may write to until the calls have ended.
struct WinLine::Calls {
    HANDLE Port = INVALID_HANDLE_VALUE;
    std::array<OVERLAPPED, EventCount> Under{};
    std::array<bool, EventCount> Begun{};
    DWORD Event = 0;
    std::array<std::uint8_t, ReadSize> Read{};
    Bytes Written;

    Calls() {
        for (OVERLAPPED& call : Under) {
            call.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        }
    }
    ~Calls() {
        for (const OVERLAPPED& call : Under) {
            CloseHandle(call.hEvent);
        }
        if (Port != INVALID_HANDLE_VALUE) {
            CloseHandle(Port);
        }
    }
    Calls(const Calls&) = delete;
    Calls& operator=(const Calls&) = delete;

    OVERLAPPED* Of(Call call) { return &Under[call]; }

    bool Begin(Call call, BOOL answer) {
        Begun[call] = HasBegun(answer);
        return Begun[call];
    }

    CallState End(Call call, DWORD& count) {
        // Its event is the last thing that a call does. One whose result is there before, the
        // system may still take for one under way, and would refuse to begin another.
        if (!HasOverlappedIoCompleted(Of(call)) || !EndsWithin(call, 0)) {
            return CallState::Pending;
        }
        if (GetOverlappedResult(Port, Of(call), &count, FALSE) == FALSE) {
            if (GetLastError() == ERROR_IO_INCOMPLETE) {
                return CallState::Pending;
            }
            count = 0;
            return Ended(call, CallState::Failed);
        }
        return Ended(call, CallState::Done);
    }

    CallState Ended(Call call, CallState state) {
        Begun[call] = false;
        ResetEvent(Under[call].hEvent);
        return state;
    }

    /// Whether the call has ended within so many milliseconds.
    [[nodiscard]] bool EndsWithin(Call call, DWORD milliseconds) const {
        return !Begun[call] ||
               WaitForSingleObject(Under[call].hEvent, milliseconds) == WAIT_OBJECT_0;
    }

    /// Ends all calls; False if a driver keeps one.
    [[nodiscard]] bool EndAll() {
        // A wait for bytes ends by this alone.
        SetCommMask(Port, 0);
        CancelIoEx(Port, nullptr);
        const ULONGLONG end = GetTickCount64() + EndPatience;
        bool ended = true;
        for (const Call call : {WaitCall, ReadCall, WriteCall}) {
            const ULONGLONG now = GetTickCount64();
            const auto left = static_cast<DWORD>(now < end ? end - now : 0);
            ended = EndsWithin(call, left) && ended;
        }
        return ended;
    }

    void Open(int number) {
        Port = CreateFileW(ToWide(ComPortPath(number)).c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                           nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
        if (Port == INVALID_HANDLE_VALUE) {
            Refuse(number, GetLastError());
        }
    }

    [[nodiscard]] bool SetUp(const LineSettings& settings) const {
        DCB line{};
        line.DCBlength = sizeof line;
        if (GetCommState(Port, &line) == FALSE) {
            return false;
        }
        SetLine(line, settings);
        // A read takes what is there and never waits; a write takes as long as the line does.
        COMMTIMEOUTS times{};
        times.ReadIntervalTimeout = MAXDWORD;
        // How much a driver keeps is its own affair: what it does not take is no fault.
        SetupComm(Port, QueueSize, QueueSize);
        return SetCommState(Port, &line) != FALSE && SetCommTimeouts(Port, &times) != FALSE &&
               SetCommMask(Port, EV_RXCHAR) != FALSE;
    }
};

WinLine::WinLine(int number, const LineSettings& settings) : calls_(std::make_unique<Calls>()) {
    calls_->Open(number);
    if (!calls_->SetUp(settings)) {
        Refuse(number, GetLastError());
    }
}

WinLine::~WinLine() {
    if (!calls_->EndAll()) {
        // The driver may still write there, so the room is left to it.
        static_cast<void>(calls_.release());
    }
}

std::array<void*, WinLine::EventCount> WinLine::Events() const {
    std::array<void*, EventCount> events{};
    for (std::size_t i = 0; i < EventCount; ++i) {
        events[i] = calls_->Under[i].hEvent;
    }
    return events;
}

void WinLine::SetDTR(bool raised) {
    // A device without that line is no fault.
    EscapeCommFunction(calls_->Port, raised ? SETDTR : CLRDTR);
}

void WinLine::AwaitWrite(int milliseconds) {
    static_cast<void>(calls_->EndsWithin(WriteCall, static_cast<DWORD>(milliseconds)));
}

bool WinLine::BeginWait() {
    return calls_->Begin(WaitCall,
                         WaitCommEvent(calls_->Port, &calls_->Event, calls_->Of(WaitCall)));
}

CallState WinLine::EndWait() {
    DWORD unused = 0;
    return calls_->End(WaitCall, unused);
}

bool WinLine::BeginRead() {
    return calls_->Begin(ReadCall, ReadFile(calls_->Port, calls_->Read.data(), ReadSize, nullptr,
                                            calls_->Of(ReadCall)));
}

CallState WinLine::EndRead(Bytes& into) {
    DWORD count = 0;
    const CallState state = calls_->End(ReadCall, count);
    if (state == CallState::Done) {
        const auto begin = calls_->Read.begin();
        into.insert(into.end(), begin, begin + static_cast<std::ptrdiff_t>(count));
    }
    return state;
}

bool WinLine::BeginWrite(std::span<const std::uint8_t> bytes) {
    calls_->Written.assign(bytes.begin(), bytes.end());
    return calls_->Begin(WriteCall, WriteFile(calls_->Port, calls_->Written.data(),
                                              static_cast<DWORD>(calls_->Written.size()), nullptr,
                                              calls_->Of(WriteCall)));
}

CallState WinLine::EndWrite(std::size_t& count) {
    DWORD written = 0;
    const CallState state = calls_->End(WriteCall, written);
    count = written;
    return state;
}

void WinLine::Purge() {
    PurgeComm(calls_->Port, PURGE_RXCLEAR);
}

bool WinLine::IsThere() {
    DWORD errors = 0;
    return ClearCommError(calls_->Port, &errors, nullptr) != FALSE;
}
