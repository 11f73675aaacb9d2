// The files the module reads and must never write over: the drawing open in the host, and the price
// list a dialog has open.
#pragma once

#include <string>

// The open drawing's full path, from the host's DWGPREFIX and DWGNAME; empty when it does not say.
std::wstring OpenDrawingPath();

// True, after an alert that names the file, when `path` is the open drawing or, unless empty,
// `priceListInUse` (the same file under any name, links followed). The caller then writes nothing.
bool RefuseToWriteOver(const std::wstring& path, const std::wstring& priceListInUse = L"");
