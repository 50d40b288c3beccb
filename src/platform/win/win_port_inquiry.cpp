#include "platform/win/win_port_inquiry.h"

#include <windows.h>

#include "platform/com_port.h"
#include "platform/win/win_text.h"

PortCondition WinPortInquiry::ConditionOf(int number) {
    PortCondition condition;
    const HANDLE port =
        CreateFileW(ToWide(ComPortPath(number)).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                    OPEN_EXISTING, 0, nullptr);
    if (port != INVALID_HANDLE_VALUE) {
        DCB line{};
        line.DCBlength = sizeof line;
        condition.IsSerial = GetCommState(port, &line) != FALSE;
        CloseHandle(port);
        return condition;
    }
    const ComRefusal refusal = ComRefusalOf(GetLastError());
    condition.Exists = refusal != ComRefusal::Missing;
    condition.Busy = refusal == ComRefusal::InUse;
    return condition;
}
