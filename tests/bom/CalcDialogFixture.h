// The calculation dialog over an in-memory drawing with a scripted editor: a price list in a
// temporary folder, references to count, the settings beside a module path in that folder.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "bom/BomRows.h"
#include "bom/CalcPriceDialog.h"
#include "host/scripted/memorydatabase.h"
#include "host/scripted/scriptededitor.h"
#include "tests/TempFolder.h"

// Door|450, Window|620, Desk|380 with descriptions.
extern const char* const kDoorsList;
// The bill of four doors, ten windows and two chairs against kDoorsList, as the grid shows it.
extern const std::vector<BomRow> kDoorsBill;

class CalcDialogFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Writes the list and returns its path.
    std::wstring WriteList(const std::string& name, const std::string& text);
    std::vector<AcDbObjectId> References(const std::wstring& block, int count);
    // Four doors, ten windows, two chairs.
    std::vector<AcDbObjectId> DoorsDrawing();
    // A dialog as the command leaves it before running it: list loaded (unless empty), the
    // references counted, initialised and shown.
    std::unique_ptr<CalcPriceDialog> OpenDialog(const std::string& listText,
                                                std::vector<AcDbObjectId> references);

    // Real clicks and drags on the grid's heading.
    void ClickHeading(MyCug2& grid, int col);
    void DragDivider(MyCug2& grid, int col, int by);
    std::vector<std::wstring> Column(MyCug2& grid, int col);

    std::string Settings(const std::string& name) const { return m_folder.read(name); }

    MemoryDatabase m_database;
    ScriptedEditor m_editor;
    TempFolder m_folder;
};
