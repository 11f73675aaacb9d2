// The blinking message label.
#include "pricelist/CStaticEx.h"

#include <QTimerEvent>

#include "host/api/acapwindow.h"

namespace {

constexpr int kBlinkTimer = 0;
constexpr int kEndTimer = 1;

}  // namespace

CStaticEx::CStaticEx(QWidget* parent) : QLabel(parent) {}

void CStaticEx::ShowMessage(int endTime, int blinkPeriod, const std::wstring& text) {
    setText(QString::fromStdWString(text));
    // A message stands out over whatever lies beneath the label.
    setAutoFillBackground(true);
    m_blinkState = 1;
    StartTimer(kBlinkTimer, blinkPeriod);
    if (endTime > 0) StartTimer(kEndTimer, endTime);
}

void CStaticEx::StopMessage() { OnTimer(kEndTimer); }

void CStaticEx::OnTimer(int timer) {
    if (timer == kBlinkTimer) {
        if (m_blinkState == 1) {
            setEnabled(true);
            m_blinkState = 0;
            Beep(100, 100);
        } else {
            setEnabled(false);
            m_blinkState = 1;
        }
        return;
    }
    if (timer == kEndTimer) {
        KillTimer(kEndTimer);
        KillTimer(kBlinkTimer);
        setEnabled(true);
        clear();
        setAutoFillBackground(false);
    }
}

bool CStaticEx::IsTimerRunning(int timer) const {
    return (timer == kBlinkTimer || timer == kEndTimer) && m_timerIds[timer] != 0;
}

void CStaticEx::timerEvent(QTimerEvent* event) {
    for (int timer : {kBlinkTimer, kEndTimer}) {
        if (m_timerIds[timer] == event->timerId()) {
            OnTimer(timer);
            return;
        }
    }
    QLabel::timerEvent(event);
}

// Starting a timer that runs replaces it, with the new period.
void CStaticEx::StartTimer(int timer, int period) {
    KillTimer(timer);
    m_timerIds[timer] = startTimer(period > 0 ? period : 1);
}

void CStaticEx::KillTimer(int timer) {
    if (m_timerIds[timer] == 0) return;
    killTimer(m_timerIds[timer]);
    m_timerIds[timer] = 0;
}
