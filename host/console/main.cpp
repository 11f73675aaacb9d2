// `tarnwick`: batch work on drawings with the module's bill of materials, from the command line.
#include <clocale>
#include <cstdio>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "host/console/blockscommand.h"
#include "host/console/bomcommand.h"
#include "host/console/checkcommand.h"
#include "host/console/infocommand.h"
#include "host/console/messages.h"
#include "host/console/refreshcommand.h"
#include "host/console/standardoutput.h"

namespace {

constexpr const char* kUsage =
    "Usage: tarnwick COMMAND DRAWING... [OPTIONS]\n"
    "\n"
    "Priced bills of materials for the blocks of DXF drawings.\n"
    "\n"
    "Commands:\n"
    "  bom DRAWING... --prices LIST\n"
    "                              count the block references against a price list and print\n"
    "                              the bill of materials as the text report has it; several\n"
    "                              drawings are read in parallel and counted together\n"
    "      --report [FILE]         also write the report (default: LIST's name, \"-\", the\n"
    "                              drawing's name, \".txt\", beside LIST)\n"
    "      --csv FILE              also write the rows as CSV (UTF-8, for spreadsheets)\n"
    "      --xlsx FILE             also write the rows as an Excel workbook\n"
    "      --table-at X,Y          draw the table block (\"QTB\" and four digits) and insert it\n"
    "                              with its upper left corner at X,Y (one drawing only)\n"
    "      --scale S               ... at scale S (default 1)\n"
    "      --table-text            ... with its cells as plain texts, which every viewer draws,\n"
    "                              instead of attribute definitions and attributes\n"
    "      -o OUT                  write the drawing with the table to OUT (default: beside\n"
    "                              DRAWING, \"-bom\" before the extension)\n"
    "      --hide-prices           leave out item prices, totals and the summary\n"
    "      --only-priced           count only blocks that are in the price list\n"
    "      --window X1,Y1,X2,Y2    only references whose insertion point lies in the window\n"
    "      --layer NAME            only references on this layer (may be repeated)\n"
    "      --nested                count the references inside counted blocks too, multiplied\n"
    "      --record-names          count dynamic blocks' variants (\"*U...\") under their own\n"
    "                              names instead of the dynamic block's\n"
    "      --arrays-as-one         count an array (MINSERT) once, as the CAD module does,\n"
    "                              instead of once for each of its columns x rows\n"
    "      --layouts               count the references in paper-space layouts too; JSON, CSV\n"
    "                              and XLSX give a quantity for each space\n"
    "      --jobs N                read N drawings at a time (default: the machine's cores)\n"
    "      --json                  print the rows and the grand total as JSON instead, with\n"
    "                              each price table of the drawing: whether it is current and\n"
    "                              whether it holds these rows\n"
    "      --list-encoding NAME    read LIST (and write the report) in this code page, any\n"
    "                              name iconv knows (CP1251, ISO-8859-8, ...); also for check\n"
    "                              and blocks\n"
    "  check DRAWING [--prices LIST] [--json] [--nested] [--record-names] [--arrays-as-one]\n"
    "        [--layouts]\n"
    "                              look the drawing and the list over: blocks without a price,\n"
    "                              prices without a block, names listed twice, prices that are\n"
    "                              not numbers or too large to count with, totals that overflow,\n"
    "                              skipped lines, a list that is not UTF-8, dynamic blocks\n"
    "                              without a link, priced blocks used only in layouts; and the\n"
    "                              drawing's price tables: each is counted again from what it\n"
    "                              recorded (its list, or LIST) and named with what changed\n"
    "                              when it no longer matches\n"
    "  refresh DRAWING [--prices LIST] [-o OUT]\n"
    "                              draw every out-of-date price table again in place: the same\n"
    "                              block and references, new rows and attributes, the rest of\n"
    "                              the drawing byte for byte; prints what changed\n"
    "      --prices LIST           count against LIST instead of the lists the tables recorded\n"
    "      -o OUT                  write the drawing to OUT (default: beside DRAWING, \"-bom\"\n"
    "                              before the extension; nothing is written when every table\n"
    "                              is current)\n"
    "  blocks DRAWING [--prices LIST]\n"
    "                              the drawing's block names with their reference counts in\n"
    "                              model space (and in layouts, where they hold any); with\n"
    "                              LIST, the names that have no price yet\n"
    "  info DRAWING [--json]       version, encoding, handle seed, entity counts, references\n"
    "  --version                   print the program's version and exit\n"
    "\n"
    "Every command that reads a drawing takes --recover: a drawing whose sections, tables or\n"
    "blocks do not nest as they must (a stray \"0 ENDSEC\", records outside any section, a\n"
    "missing \"0 EOF\") is read with its structure mended, each repair told on standard error;\n"
    "a drawing written afterwards holds the mended structure.\n"
    "\n"
    "Exit status: 0 done, 1 a file could not be read or written (also a table's list, which\n"
    "refresh then leaves as it is), 2 bad usage, 3 check found something.\n";

struct Command {
    std::string_view name;
    int (*run)(const std::vector<std::string>& arguments);
};

constexpr Command kCommands[] = {
    {"bom", runBomCommand},       {"check", runCheckCommand}, {"refresh", runRefreshCommand},
    {"blocks", runBlocksCommand}, {"info", runInfoCommand},
};

}  // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) return usageError("no command given");
    const std::string& first = args.front();
    if (first == "--help" || first == "-h") {
        writeStandardOutput(kUsage);
        return finishStandardOutput(kExitOk);
    }
    if (first == "--version") {
        printStandardOutput("tarnwick %s\n", TARNWICK_VERSION);
        return finishStandardOutput(kExitOk);
    }
    for (const auto& command : kCommands) {
        if (command.name != first) continue;
        try {
            return finishStandardOutput(command.run({args.begin() + 1, args.end()}));
        } catch (const std::bad_alloc&) {
            return fail("tarnwick", "not enough memory");
        }
    }
    return usageError("unknown command \"" + first + "\"");
}
