// Telling the files in use from the one about to be written.
#include "pricelist/FilesInUse.h"

#include "files/fileidentity.h"
#include "host/api/acededitor.h"
#include "text/TextFile.h"

namespace {

bool IsSame(const std::wstring& a, const std::wstring& b) {
    return !a.empty() && !b.empty() && isSameFile(NativePath(a), NativePath(b));
}

}  // namespace

std::wstring OpenDrawingPath() {
    resbuf prefix;
    resbuf name;
    if (acedGetVar(L"DWGPREFIX", &prefix) != RTNORM || acedGetVar(L"DWGNAME", &name) != RTNORM ||
        prefix.restype != RTSTR || name.restype != RTSTR)
        return {};
    return std::wstring(prefix.resval.rstring) + name.resval.rstring;
}

bool RefuseToWriteOver(const std::wstring& path, const std::wstring& priceListInUse) {
    const wchar_t* what = nullptr;
    if (IsSame(path, OpenDrawingPath())) {
        what = L" is the drawing that is open: it is not written over";
    } else if (IsSame(path, priceListInUse)) {
        what = L" is the price list in use: it is not written over";
    } else {
        return false;
    }
    acedAlert((L"File " + path + what).c_str());
    return true;
}
