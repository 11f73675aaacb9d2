// The command line: printed text and answers, and the typed lines' history.
#include <gtest/gtest.h>

#include <QTest>

#include "host/desktop/shell/commandline.h"

namespace {

TEST(CommandLine, PrintedTextKeepsItsLastLineOpenUntilAnswered) {
    CommandLine line;
    line.print(QStringLiteral("\nCommand: "));
    EXPECT_EQ(line.openLine(), QStringLiteral("Command: "));
    line.echo(QStringLiteral("ZOOM"));
    line.print(QStringLiteral("\nSpecify corner: "));
    line.echo(QStringLiteral("E"));
    line.print(QStringLiteral("first\nsecond\n\nthird"));
    EXPECT_EQ(line.history(),
              QStringLiteral("Command: ZOOM\nSpecify corner: E\nfirst\nsecond\nthird"));
    EXPECT_EQ(line.openLine(), QStringLiteral("third"));
}

// Enter and Esc with real keys: every prompt of the shell's tests.
TEST(CommandLine, UpAndDownWalkTheTypedLinesAndComeBackToTheDraft) {
    CommandLine line;
    line.show();
    for (const char* typed : {"OPEN", "ZOOM", "ZOOM", "", "RZBOMC"}) {
        QTest::keyClicks(&line.input(), QString::fromLatin1(typed));
        QTest::keyClick(&line.input(), Qt::Key_Return);
    }
    // Empty lines and repeats are not remembered.
    EXPECT_EQ(
        line.input().typedLines(),
        (QStringList{QStringLiteral("OPEN"), QStringLiteral("ZOOM"), QStringLiteral("RZBOMC")}));
    QTest::keyClicks(&line.input(), QStringLiteral("SA"));
    QTest::keyClick(&line.input(), Qt::Key_Up);
    EXPECT_EQ(line.input().text(), QStringLiteral("RZBOMC"));
    QTest::keyClick(&line.input(), Qt::Key_Up);
    QTest::keyClick(&line.input(), Qt::Key_Up);
    QTest::keyClick(&line.input(), Qt::Key_Up);
    EXPECT_EQ(line.input().text(), QStringLiteral("OPEN"));
    QTest::keyClick(&line.input(), Qt::Key_Down);
    EXPECT_EQ(line.input().text(), QStringLiteral("ZOOM"));
    QTest::keyClick(&line.input(), Qt::Key_Down);
    QTest::keyClick(&line.input(), Qt::Key_Down);
    EXPECT_EQ(line.input().text(), QStringLiteral("SA"));
}

}  // namespace
