// The command line: the history of what was printed and answered, the open line with the prompt,
// and the input field with its own history of typed lines (Up and Down).
#pragma once

#include <QLineEdit>
#include <QStringList>
#include <QWidget>

class QLabel;
class QPlainTextEdit;

// The input field: Up and Down walk the typed lines, Esc cancels.
class CommandInput final : public QLineEdit {
    Q_OBJECT
public:
    explicit CommandInput(QWidget* parent = nullptr);
    void remember(const QString& line);
    const QStringList& typedLines() const { return m_typed; }

signals:
    void cancelled();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void recall(int step);

    QStringList m_typed;
    int m_position = 0;  // m_typed.size() while no typed line is shown
    QString m_draft;     // what was in the field before Up
};

class CommandLine final : public QWidget {
    Q_OBJECT
public:
    explicit CommandLine(QWidget* parent = nullptr);

    // Text as the host prints it: "\n" ends a line; what follows the last one stays open, shown
    // beside the input field, until the next line break or answer. A line break on an empty
    // line is dropped: prompts start with one to leave whatever line they find.
    void print(const QString& text);
    // The answer after the open line, which it ends.
    void echo(const QString& answer);
    // Every line so far, the open one last.
    QString history() const;
    QString openLine() const { return m_openLine; }
    CommandInput& input() { return *m_input; }

signals:
    // Enter, also on an empty field.
    void submitted(const QString& line);
    void cancelled();

private:
    void finishLine();
    void showOpenLine();

    QPlainTextEdit* m_history;
    QLabel* m_prompt;
    CommandInput* m_input;
    QString m_openLine;
    QStringList m_lines;
};
