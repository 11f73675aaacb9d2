// The files a command line would write, checked against the files it reads and against each other
// before anything is read: a typing mistake must never write over a drawing or a price list.
#pragma once

#include <optional>
#include <string>
#include <vector>

// The drawing's name with "-bom" before its extension, in the drawing's folder: where a drawing
// the console changes goes unless -o names a file.
std::string proposedDrawingOutput(const std::string& drawing);

class OutputGuard {
public:
    void addDrawing(std::string path);
    void addPriceList(std::string path);
    // `what` is how the command line names the output: "--csv", "-o", "the report". A drawing
    // written with the table may be the drawing it was read from: `-o` naming its input asks for
    // it.
    void addOutput(std::string what, std::string path);
    void addDrawingOutput(std::string what, std::string path);

    // The usage message for the first clash, by file identity (links followed): "--csv plan.dxf
    // would write over the drawing plan.dxf", "--csv a.out and --xlsx a.out name the same file".
    std::optional<std::string> firstClash() const;

private:
    struct Named {
        std::string what;
        std::string path;
        bool isDrawing = false;
    };
    std::vector<Named> m_inputs;
    std::vector<Named> m_outputs;
};
