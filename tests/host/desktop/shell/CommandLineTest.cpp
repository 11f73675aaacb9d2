// The command line: printed text and answers, the typed lines' history, Enter and Esc.
#include <gtest/gtest.h>

#include <QSignalSpy>
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

TEST(CommandLine, EnterSubmitsTheLineAlsoWhenEmptyAndEscCancels) {
    CommandLine line;
    line.show();
    QSignalSpy submitted(&line, &CommandLine::submitted);
    QSignalSpy cancelled(&line, &CommandLine::cancelled);
    QTest::keyClicks(&line.input(), QStringLiteral("10,20"));
    QTest::keyClick(&line.input(), Qt::Key_Return);
    QTest::keyClick(&line.input(), Qt::Key_Return);
    QTest::keyClicks(&line.input(), QStringLiteral("half typed"));
    QTest::keyClick(&line.input(), Qt::Key_Escape);
    ASSERT_EQ(submitted.count(), 2);
    EXPECT_EQ(submitted[0][0].toString(), QStringLiteral("10,20"));
    EXPECT_EQ(submitted[1][0].toString(), QString());
    EXPECT_EQ(cancelled.count(), 1);
    EXPECT_EQ(line.input().text(), QString());
}

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
