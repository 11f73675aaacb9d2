// Finding money that overflows, by the module's own reading of prices.
#include "host/console/moneyoverflow.h"

#include <cmath>

#include "bom/BomRows.h"
#include "text/CaseRules.h"
#include "text/Numbers.h"
#include "text/TextFile.h"

namespace {

std::string narrow(const std::wstring& text) { return EncodeText(text, TextFormat{}); }

std::string shown(double value) { return narrow(FormatMoney(value)); }

}  // namespace

std::wstring moneyKeyOf(const std::wstring& name) { return FoldCase(MakeLower(name)); }

std::vector<MoneyOverflow> findMoneyOverflows(
    const std::vector<PriceListLine>& lines,
    const std::map<std::wstring, std::int64_t>& quantities) {
    std::map<std::wstring, const PriceListLine*> winners;  // the last row of each name wins
    for (const auto& line : lines) {
        if (line.kind == PriceListLineKind::Row) winners[moneyKeyOf(line.row.name)] = &line;
    }
    std::vector<MoneyOverflow> found;
    double grandTotal = 0.0;
    bool everyTotalFinite = true;
    for (const auto& line : lines) {
        if (line.kind != PriceListLineKind::Row) continue;
        const std::wstring key = moneyKeyOf(line.row.name);
        if (winners[key] != &line) continue;
        const std::string name = "\"" + narrow(line.row.name) + "\"";
        const double price = WToF(line.row.price);
        if (!std::isfinite(price)) {
            found.push_back({"price_overflow", line.line, line.row.name,
                             "the price \"" + narrow(line.row.price) + "\" of " + name +
                                 " is too large to count with; it counts as " + shown(price)});
            everyTotalFinite = false;
            continue;
        }
        const auto quantity = quantities.find(key);
        if (quantity == quantities.end() || quantity->second == 0) continue;
        const double total = price * static_cast<double>(quantity->second);
        if (!std::isfinite(total)) {
            found.push_back({"total_overflow", line.line, line.row.name,
                             "the total of " + name + " (" + std::to_string(quantity->second) +
                                 " x " + narrow(line.row.price) + ") overflows; it shows as " +
                                 shown(total)});
            everyTotalFinite = false;
            continue;
        }
        grandTotal += total;
    }
    if (everyTotalFinite && !std::isfinite(grandTotal)) {
        found.push_back({"grand_total_overflow",
                         std::nullopt,
                         {},
                         "the grand total overflows; it shows as " + shown(grandTotal)});
    }
    return found;
}
