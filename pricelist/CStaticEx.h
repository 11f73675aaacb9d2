// A message label that blinks: its text alternates between its own colour and grey, with a short
// beep at each return, until an end time passes or the message is stopped.
#pragma once

#include <QLabel>
#include <string>

class CStaticEx final : public QLabel {
    Q_OBJECT

public:
    explicit CStaticEx(QWidget* parent = nullptr);

    // Shows `text` and blinks it every `blinkPeriod` milliseconds; with `endTime` above 0 the
    // message is cleared after that many milliseconds, else it stays until StopMessage.
    void ShowMessage(int endTime, int blinkPeriod, const std::wstring& text);
    // Stops both timers, enables the label and clears its text.
    void StopMessage();
    // One tick of timer 0 (the blink) or timer 1 (the end).
    void OnTimer(int timer);

    int BlinkState() const { return m_blinkState; }
    bool IsTimerRunning(int timer) const;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void StartTimer(int timer, int period);
    void KillTimer(int timer);

    int m_blinkState = 0;
    int m_timerIds[2] = {0, 0};  // Qt's ids of timers 0 and 1; 0 when stopped
};
