// Hiding modal dialogs during a prompt and showing them again.
#include "host/desktop/shell/dialogsaside.h"

#include <QApplication>
#include <QWidget>

DialogsAside::DialogsAside(QObject* parent) : QObject(parent) {
    m_restore.setSingleShot(true);
    m_restore.setInterval(0);
    connect(&m_restore, &QTimer::timeout, this, &DialogsAside::restore);
}

void DialogsAside::promptWaits(QWidget* host) {
    m_restore.stop();
    bool hidden = false;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window == host || !window->isVisible() || !window->isModal()) continue;
        // QWidget's own setVisible: a dialog's would end the dialog's modal loop, and the
        // module's code waiting in it would take the dialog as cancelled.
        window->QWidget::setVisible(false);
        m_hidden.emplace_back(window);
        hidden = true;
    }
    if (!hidden || host == nullptr) return;
    host->activateWindow();
    host->raise();
}

void DialogsAside::promptAnswered() {
    if (!m_hidden.empty()) m_restore.start();
}

void DialogsAside::restore() {
    const auto hidden = std::move(m_hidden);
    m_hidden.clear();
    for (const QPointer<QWidget>& window : hidden) {
        if (window.isNull()) continue;
        window->show();
        window->raise();
        window->activateWindow();
    }
}
