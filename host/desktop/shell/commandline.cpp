// The command line's widgets.
#include "host/desktop/shell/commandline.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

// Enough for a working session; older lines scroll away.
constexpr int kHistoryLines = 5000;

}  // namespace

CommandInput::CommandInput(QWidget* parent) : QLineEdit(parent) {}

void CommandInput::remember(const QString& line) {
    if (!line.isEmpty() && (m_typed.isEmpty() || m_typed.back() != line)) m_typed.append(line);
    m_position = static_cast<int>(m_typed.size());
    m_draft.clear();
}

void CommandInput::recall(int step) {
    const int size = static_cast<int>(m_typed.size());
    const int next = std::clamp(m_position + step, 0, size);
    if (next == m_position) return;
    if (m_position == size) m_draft = text();
    m_position = next;
    setText(m_position == size ? m_draft : m_typed[m_position]);
}

void CommandInput::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
            recall(-1);
            return;
        case Qt::Key_Down:
            recall(1);
            return;
        case Qt::Key_Escape:
            emit cancelled();
            return;
        default:
            QLineEdit::keyPressEvent(event);
    }
}

CommandLine::CommandLine(QWidget* parent)
    : QWidget(parent),
      m_history(new QPlainTextEdit(this)),
      m_prompt(new QLabel(this)),
      m_input(new CommandInput(this)) {
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    m_history->setReadOnly(true);
    m_history->setFont(fixed);
    m_history->setMaximumBlockCount(kHistoryLines);
    m_history->setFocusPolicy(Qt::NoFocus);
    m_history->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_prompt->setFont(fixed);
    m_prompt->setTextFormat(Qt::PlainText);
    m_input->setFont(fixed);
    m_input->setFrame(false);
    m_input->setObjectName(QStringLiteral("commandInput"));

    auto* row = new QHBoxLayout;
    row->setContentsMargins(4, 2, 4, 2);
    row->setSpacing(0);
    row->addWidget(m_prompt);
    row->addWidget(m_input, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_history, 1);
    layout->addLayout(row);
    setFocusProxy(m_input);

    connect(m_input, &QLineEdit::returnPressed, this, [this] {
        const QString line = m_input->text();
        m_input->remember(line);
        m_input->clear();
        emit submitted(line);
    });
    connect(m_input, &CommandInput::cancelled, this, [this] {
        m_input->clear();
        emit cancelled();
    });
}

void CommandLine::print(const QString& text) {
    const QStringList pieces = text.split(QLatin1Char('\n'));
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        if (i > 0) finishLine();
        m_openLine += pieces[i];
    }
    showOpenLine();
}

void CommandLine::echo(const QString& answer) {
    m_openLine += answer;
    finishLine();
    showOpenLine();
}

void CommandLine::finishLine() {
    if (m_openLine.isEmpty()) return;
    m_lines.append(m_openLine);
    if (m_lines.size() > kHistoryLines) m_lines.removeFirst();
    m_history->appendPlainText(m_openLine);
    m_openLine.clear();
    m_history->verticalScrollBar()->setValue(m_history->verticalScrollBar()->maximum());
}

void CommandLine::showOpenLine() { m_prompt->setText(m_openLine); }

QString CommandLine::history() const {
    QStringList lines = m_lines;
    lines.append(m_openLine);
    return lines.join(QLatin1Char('\n'));
}
