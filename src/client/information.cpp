#include "client/information.h"

#include "common/number_text.h"
#include "common/text.h"

namespace {

std::string IntervalText(const LoggerRecord& record) {
    constexpr unsigned styleMask = 3;
    switch (record.LoggingStyle & styleMask) {
        case 1:
            return "Logarithmic";
        case 2:
            return "Fast";
        default:
            return record.SampleInterval;
    }
}

void ShowAlarms(const LoggerRecord& record, ClientPanel& panel) {
    for (int alarm = 0; alarm < 2; ++alarm) {
        const auto i = static_cast<std::size_t>(alarm);
        panel.lblAlarm[i].Text = panel.lblAlarm2[i].Text = AlarmText(record, alarm);
        panel.lblAlarm[i].Enabled = panel.lblAlarm2[i].Enabled = record.AlarmEnable[i] != 0;
    }
}

}  // namespace

std::string AlarmText(const LoggerRecord& record, int alarm) {
    const auto i = static_cast<std::size_t>(alarm);
    const int hour = record.AlarmHour[i];
    int shown = hour;
    if (hour == 0) {
        shown = 12;
    } else if (hour >= 13) {
        shown = hour - 12;
    }
    return IntegerToText(shown) + ":" + TwoDigits(record.AlarmMin[i]) + ":" +
           TwoDigits(record.AlarmSec[i]) + (hour >= 12 ? " PM" : " AM");
}

void ShowLoggerTime(const LoggerRecord& record, ClientPanel& panel) {
    panel.lblLoggerTime.Text = panel.lblLoggerTime2.Text = record.LoggerTime;
}

void ShowStatus(const LoggerRecord& record, ClientPanel& panel) {
    panel.lblLoggingState.Text = panel.lblLoggingState2.Text = record.LoggingState;
    panel.lblRecords.Text = IntegerToText(record.NumSamples);
    panel.lblRecords2.Text = panel.lblRecords.Text + " Records";
}

void ShowSettings(const LoggerRecord& record, ClientPanel& panel) {
    ShowLoggerTime(record, panel);
    panel.lblLoggerName.Text = panel.lblLoggerName2.Text = record.LoggerName;
    panel.lblSampleInterval.Text = panel.lblSampleInterval2.Text = IntervalText(record);
    panel.lblWarmup.Text = panel.lblWarmup2.Text = IntegerToText(record.SensorWarmupTime) + " sec";
    ShowStatus(record, panel);
    ShowAlarms(record, panel);
}

void BlankDisplay(ClientPanel& panel) {
    const auto blank = [](auto&... controls) { (controls.Text.clear(), ...); };
    const auto blankAll = [](auto&... arrays) {
        const auto each = [](auto& array) {
            for (PanelControl& control : array) {
                control.Text.clear();
            }
        };
        (each(arrays), ...);
    };
    blankAll(panel.lblData2, panel.lblHistory, panel.lblValue, panel.lblMax, panel.lblMin,
             panel.lblUnits, panel.lblPulse2, panel.lblAlarm, panel.lblAlarm2);
    blank(panel.lblRecords, panel.lblRecords2, panel.lblLoggerTime, panel.lblLoggerTime2,
          panel.lblLoggerName, panel.lblLoggerName2, panel.lblSampleInterval,
          panel.lblSampleInterval2, panel.lblWarmup, panel.lblWarmup2, panel.lblLoggingState,
          panel.lblLoggingState2);
}
