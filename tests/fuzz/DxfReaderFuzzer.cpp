// libFuzzer target for the DXF reader: any bytes give a drawing or an error, never a crash. A
// drawing that is read must write back byte for byte, and after the edits the module makes it must
// read again; one that a recovering read mends must read strictly as it was mended.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "host/dxf/dxfdocument.h"

namespace {

void check(bool condition) {
    if (!condition) std::abort();
}

void readEverything(const DxfDocument& document) {
    for (const AcDbObjectId id : document.blockTableRecordIds()) {
        std::wstring name;
        check(document.getBlockTableRecordName(id, name) == Acad::eOk);
    }
    for (const DxfSpace space : {DxfSpace::Model, DxfSpace::Paper}) {
        for (const DxfReference& reference : document.blockReferences(space)) {
            AcDbBlockReference opened;
            check(document.openBlockReference(reference.id, opened) == Acad::eOk);
            std::wstring name;
            (void)document.getBlockTableRecordName(opened.blockTableRecord, name);
        }
    }
    resbuf value;
    for (const wchar_t* name : {L"ATTREQ", L"SNAPMODE", L"OSMODE", L"DWGNAME"})
        check(document.getVar(name, value) == RTNORM);
}

// What the calculation command does to a drawing, and a reference to each block the file defines.
void edit(DxfDocument& document) {
    AcDbObjectId style;
    (void)document.addTextStyle({L"QTBTABLE", L"simpheb.shx"}, style);
    (void)document.setVar(L"OSMODE", resbuf::shortValue(0));
    AcDbObjectId block;
    if (document.addBlockTableRecord(L"QTB0001", block) == Acad::eOk) {
        AcDbObjectId id;
        check(document.appendLine(block, {{58.8, 2, 0}, {0, 2, 0}}, id) == Acad::eOk);
        AcDbAttributeDefinition definition;
        definition.position = {1, 0, 0};
        definition.alignmentPoint = {6.6, 0, 0};
        definition.horizontalMode = AcDb::kTextCenter;
        definition.textString = L"\u05d7\u05dc\u05d5\u05df \u00e9";
        definition.tag = definition.prompt = L"DESCRIPTION1";
        definition.textStyle = style;
        check(document.appendAttributeDefinition(block, definition, id) == Acad::eOk);
        check(document.setBlockTableRecordOrigin(block, {0, 2, 0}) == Acad::eOk);
    }
    for (const AcDbObjectId id : document.blockTableRecordIds()) {
        AcDbBlockReference reference;
        reference.blockTableRecord = id;
        reference.position = {10, 20, 0};
        reference.scaleFactors = {2, 2, 1};
        reference.rotation = 0.5;
        AcDbObjectId inserted;
        (void)document.insertBlockReference(reference, inserted);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    auto read = DxfDocument::readBytes("fuzz.dxf", bytes);
    if (!read.isOk()) {
        // A recovering read mends what it can, and what it mended reads strictly as it stands.
        auto mended = DxfDocument::readBytes("fuzz.dxf", bytes, DxfReading::Recover);
        if (!mended.isOk()) return 0;
        check(!mended.value()->repairs().empty());
        const std::string written = mended.value()->toBytes();
        auto again = DxfDocument::readBytes("fuzz.dxf", written);
        check(again.isOk() && again.value()->toBytes() == written);
        readEverything(*mended.value());
        return 0;
    }
    DxfDocument& document = *read.value();
    check(document.toBytes() == bytes);
    readEverything(document);
    edit(document);
    auto again = DxfDocument::readBytes("fuzz.dxf", document.toBytes());
    check(again.isOk());
    readEverything(*again.value());
    return 0;
}
