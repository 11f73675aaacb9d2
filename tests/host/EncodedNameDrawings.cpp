// The drawings with names in three code pages.
#include "tests/host/EncodedNameDrawings.h"

#include <tuple>

const char* const kEncodedNamePrices =
    "\xd0\xa1\xd0\xa2\xd0\xa3\xd0\x9b|12.50|chair\n"  // СТУЛ
    "\xc3\xa4rmel|3.10|sleeve\n"                      // ärmel
    "\xcf\x89MEGA|100|omega\n";                       // ωMEGA

namespace {

// Стул, стул, Ärmel, Ωmega and their spellings.
const std::wstring kStul = L"\u0441\u0442\u0443\u043b";
const std::wstring kArmel = L"\u00e4rmel";
const std::wstring kOmega = L"\u03c9mega";

EncodedNameDrawing cyrillic1251() {
    FixtureDrawing d;
    d.version = FixtureVersion::R12;
    d.codePage = "ANSI_1251";
    const std::string stul = "\xD1\xF2\xF3\xEB";  // Стул in code page 1251
    const std::string armel = "\\U+00C4RMEL";      // ÄRMEL: not in 1251
    d.blocks = {{stul, {}, ""}, {armel, {}, ""}};
    d.references = {{stul, 0, 0}, {"\\U+0421\\U+0442\\U+0443\\U+043B", 1, 0}, {stul, 2, 0}, {armel, 3, 0}};
    return {"names-1251-r12.dxf", d,
            {{kStul, 3, L"37.50"}, {kArmel, 1, L"3.10"}, {kOmega, 0, L"0.00"}},
            {L"\u00c4RMEL", L"\u0421\u0442\u0443\u043b"}};
}

EncodedNameDrawing latin1252() {
    FixtureDrawing d;
    d.version = FixtureVersion::R2000;
    d.codePage = "ANSI_1252";
    const std::string armel = "\xC4RMEL";          // ÄRMEL in code page 1252
    const std::string omega = "\\U+03A9MEGA";      // ΩMEGA: not in 1252
    const std::string stul = "\\U+0421\\U+0442\\U+0443\\U+043B";
    d.blocks = {{omega, {}, ""}, {stul, {}, ""}, {armel, {}, ""}};
    d.references = {{armel, 0, 0}, {"\\U+00C4RMEL", 1, 0}, {omega, 2, 0}, {armel, 3, 0},
                    {stul, 4, 0}, {omega, 5, 0}};
    return {"names-1252-r2000.dxf", d,
            {{kStul, 1, L"12.50"}, {kArmel, 3, L"9.30"}, {kOmega, 2, L"200.00"}},
            {L"\u00c4RMEL", L"\u03a9MEGA", L"\u0421\u0442\u0443\u043b"}};
}

EncodedNameDrawing greek1253() {
    FixtureDrawing d;
    d.version = FixtureVersion::R12;
    d.codePage = "ANSI_1253";
    const std::string omega = "\xD9mega";  // Ωmega in code page 1253
    const std::string stul = "\\U+0441\\U+0442\\U+0443\\U+043B";
    d.blocks = {{stul, {}, ""}, {omega, {}, ""}, {"\\U+00E4rmel", {}, ""}};
    d.references = {{omega, 0, 0}, {"\\U+03A9mega", 1, 0}, {stul, 2, 0}, {omega, 3, 0}};
    return {"names-1253-r12.dxf", d,
            {{kStul, 1, L"12.50"}, {kArmel, 0, L"0.00"}, {kOmega, 3, L"300.00"}},
            {kArmel, L"\u03a9mega", kStul}};
}

}  // namespace

std::vector<EncodedNameDrawing> encodedNameDrawings() { return {cyrillic1251(), latin1252(), greek1253()}; }
