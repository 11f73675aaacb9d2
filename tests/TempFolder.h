// A fresh folder for one test's files, removed with everything in it when the test ends.
#pragma once

#include <string>
#include <vector>

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
    // The names in the folder, or in a folder inside it, sorted.
    std::vector<std::string> entries(const std::string& folder = "") const;

private:
    std::string m_path;
};
