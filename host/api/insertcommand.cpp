// Carrying out ".INSERT" on the working drawing.
#include "host/api/insertcommand.h"

#include <cmath>
#include <numbers>

#include "text/CaseRules.h"
#include "text/Numbers.h"

namespace {

bool isString(const resbuf& value) { return value.restype == RTSTR; }
bool isReal(const resbuf& value) { return value.restype == RTREAL; }
bool isPoint(const resbuf& value) { return value.restype == RT3DPOINT || value.restype == RTPOINT; }

}  // namespace

int runInsertCommand(AcDbDatabase& database, const std::vector<resbuf>& arguments) {
    if (arguments.size() != 6 || !isString(arguments[0]) || !isString(arguments[1]) ||
        !isPoint(arguments[2]) || !isReal(arguments[3]) || !isReal(arguments[4]) ||
        !isString(arguments[5]))
        return RTREJ;
    std::wstring command = MakeUpper(arguments[0].resval.rstring);
    while (!command.empty() && (command.front() == L'.' || command.front() == L'_'))
        command.erase(0, 1);
    if (command != L"INSERT") return RTREJ;

    AcDbBlockReference reference;
    if (database.getBlockTableRecordId(arguments[1].resval.rstring, reference.blockTableRecord) !=
        Acad::eOk)
        return RTREJ;
    reference.position = arguments[2].resval.rpoint;
    reference.scaleFactors = {arguments[3].resval.rreal, arguments[4].resval.rreal, 1.0};
    reference.rotation = WToF(arguments[5].resval.rstring) * std::numbers::pi / 180.0;
    AcDbObjectId id;
    return database.insertBlockReference(reference, id) == Acad::eOk ? RTNORM : RTREJ;
}
