// A fresh folder for one test's files, removed with everything in it when the test ends.
#pragma once

#include <string>

class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string path(const std::string& name) const { return m_path + "/" + name; }
    std::wstring wpath(const std::string& name) const;

    void write(const std::string& name, const std::string& bytes) const;
    std::string read(const std::string& name) const;

private:
    std::string m_path;
};
