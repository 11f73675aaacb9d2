// The calculation dialog: the bill of materials in its grid, sorted, with prices shown or hidden,
// another price list attached, the report saved and the table drawn into the drawing.
//
// The command runs it in these steps: construct, LoadSettings, SetPriceListLoaded(false),
// LoadPriceList (when a file was chosen), CountSelection, DoModal; after IDOK the table block
// exists and TableBlockName, TableWidth and TableHeight say what to insert.
#pragma once

#include <QDialog>
#include <string>

#include "bom/BomCalculation.h"
#include "bom/MyCug2.h"

class QCheckBox;
class QLabel;

class CalcPriceDialog final : public QDialog {
public:
    // Becomes the one open calculation dialog (`calcPriceDialog`) until it goes.
    explicit CalcPriceDialog(QWidget* parent = nullptr);
    ~CalcPriceDialog() override;
    CalcPriceDialog(const CalcPriceDialog&) = delete;
    CalcPriceDialog& operator=(const CalcPriceDialog&) = delete;

    // Reads the five column widths ("tarnwick2.set") and `lastCalcFileName` ("filename.set");
    // a missing file leaves the values as they are.
    void LoadSettings();
    void SetPriceListLoaded(bool loaded) { m_priceListLoaded = loaded; }
    bool PriceListLoaded() const { return m_priceListLoaded; }
    // The price list's rows, the grid emptied; false after the alert when it cannot be opened.
    bool LoadPriceList(const std::wstring& path);
    // The user's selection counted into the rows; false when none was made or after an alert.
    bool CountSelection();

    // Attaches the grid and fills it from the rows; DoModal does it before showing the dialog.
    void OnInitDialog();
    // IDOK once the table block was drawn, IDCANCEL otherwise.
    int DoModal();

    // Writes the settings and ends the dialog with IDCANCEL: "&Close", the window's close box,
    // Escape in the grid.
    void SaveAndClose();

    const std::wstring& TableBlockName() const { return m_tableBlockName; }
    double TableWidth() const { return m_grid.TableWidth(); }
    double TableHeight() const { return m_grid.TableHeight(); }
    MyCug2& Grid() { return m_grid; }
    const BomCalculation& Calculation() const { return m_calculation; }

    // Escape on a button or the check box ends the dialog as Cancel, the settings unsaved.
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void OnAttachNew();
    void OnInsert();
    void OnSaveToFile();
    void OnShowPrice();
    // Keeps with the table drawn what it was counted from.
    void RecordSource();
    void ShowFileName();
    void EndDialog(int result);

    MyCug2 m_grid;
    BomCalculation m_calculation;
    std::wstring m_tableBlockName;  // "QTB" and four digits once "&Insert" drew the table
    TableForm m_tableForm = TableForm::Attributes;  // from "tabletext.set"
    bool m_priceListLoaded = false;
    bool m_initialised = false;
    QLabel* m_fileLabel = nullptr;
    QCheckBox* m_showPrice = nullptr;
};

// The calculation dialog that is open, so that its grid reaches it; null when none is.
extern CalcPriceDialog* calcPriceDialog;
