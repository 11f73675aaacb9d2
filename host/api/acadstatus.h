// Status and message codes of the host: the database's error status and the module message protocol.
#pragma once

namespace Acad {
// Plain enum, as the host declares it, so that code reads `Acad::eOk`.
enum ErrorStatus {
    eOk = 0,
    eNotApplicable = 2,
    eNotImplemented = 3,
    eInvalidInput = 5,
    eNullObjectId = 17,
    eWrongObjectType = 30,
    eKeyNotFound = 84,
    eDuplicateRecordName = 110,
    eWasErased = 111,
    eInvalidSymbolTableName = 150,
    eOutOfMemory = 200,
};
}  // namespace Acad

namespace AcRx {
enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
};
enum AppRetCode {
    kRetOK = 0,
    kRetError = 3,
};
}  // namespace AcRx

namespace AcDb {
enum OpenMode {
    kForRead = 0,
    kForWrite = 1,
};
enum TextHorzMode {
    kTextLeft = 0,
    kTextCenter = 1,
    kTextRight = 2,
};
enum TextVertMode {
    kTextBase = 0,
};
}  // namespace AcDb
