// The host's own commands, one small handler each.
#include "host/desktop/shell/builtincommands.h"

#include <iterator>
#include <numbers>

#include "host/desktop/session/inputtext.h"
#include "host/desktop/shell/desktopshell.h"
#include "host/desktop/shell/drawingsurface.h"

namespace {

constexpr int kExistingFile = 2;

// A file through the host's file prompt (dialog or command line), as the module asks for one.
std::optional<QString> askFile(DesktopShell& shell, const wchar_t* title, const std::wstring& name,
                               const wchar_t* extension, int flags) {
    std::wstring path;
    if (shell.editor().getFileD(title, name, extension, flags, path) != RTNORM) return std::nullopt;
    return QString::fromStdWString(path);
}

bool isOneOf(const QString& answer, std::initializer_list<const char*> options) {
    const QString upper = answer.toUpper();
    for (const char* option : options) {
        if (upper == QLatin1String(option)) return true;
    }
    return false;
}

int newCommand(DesktopShell& shell) {
    shell.newDrawing();
    return RTNORM;
}

int openCommand(DesktopShell& shell) {
    const auto path = askFile(shell, L"Select File", {}, L"dxf", kExistingFile);
    if (!path) return RTCAN;
    return shell.openDrawing(*path) ? RTNORM : RTERROR;
}

int saveCommand(DesktopShell& shell) { return shell.saveDrawing(); }

int saveAsCommand(DesktopShell& shell) { return shell.saveDrawingAs(); }

int closeCommand(DesktopShell& shell) { return shell.closeDrawing() ? RTNORM : RTCAN; }

int quitCommand(DesktopShell& shell) {
    if (!shell.confirmDiscardAll()) return RTCAN;
    shell.requestQuit();
    return RTNORM;
}

int redrawCommand(DesktopShell& shell) {
    shell.surface().clearVectors();
    return RTNORM;
}

int zoomWindow(DesktopShell& shell, std::optional<AcGePoint3d> first) {
    AcGePoint3d a;
    AcGePoint3d b;
    if (first) {
        a = *first;
    } else if (shell.editor().promptPoint(QStringLiteral("\nSpecify first corner: "), nullptr, a) !=
               RTNORM) {
        return RTCAN;
    }
    if (shell.editor().promptCorner(QStringLiteral("\nSpecify opposite corner: "), a, b) != RTNORM)
        return RTCAN;
    shell.surface().zoomWindow(a, b);
    return RTNORM;
}

int zoomCommand(DesktopShell& shell) {
    QString answer;
    std::optional<AcGePoint3d> picked;
    const int status = shell.editor().promptTextOrPick(
        QStringLiteral(
            "\nSpecify corner of window, enter a scale factor (nX), or [Extents/Window]: "),
        answer, picked);
    if (status != RTNORM) return status == RTNONE ? RTNORM : status;
    if (picked) return zoomWindow(shell, picked);
    if (isOneOf(answer, {"E", "EXTENTS", "A", "ALL"})) {
        shell.surface().zoomExtents();
        return RTNORM;
    }
    if (isOneOf(answer, {"W", "WINDOW"})) return zoomWindow(shell, std::nullopt);
    QString factor = answer;
    if (factor.endsWith(QLatin1Char('x'), Qt::CaseInsensitive)) factor.chop(1);
    if (const auto value = parseReal(factor.toStdWString()); value && *value > 0.0) {
        shell.surface().zoomFactor(*value);
        return RTNORM;
    }
    if (const auto corner = parsePoint(answer.toStdWString())) return zoomWindow(shell, corner);
    shell.editor().print(QStringLiteral("\nInvalid option keyword."));
    return RTERROR;
}

int undoCommand(DesktopShell& shell) {
    const DrawingSession::Undone undone = shell.drawing().undo();
    switch (undone.what) {
        case DrawingSession::Undone::What::Nothing:
            shell.editor().print(QStringLiteral("\nNothing to undo."));
            return RTERROR;
        case DrawingSession::Undone::What::Insert:
            shell.surface().entityRemoved(undone.insert);
            break;
        case DrawingSession::Undone::What::Command:
            shell.surface().reload();
            break;
    }
    shell.editor().print(
        QStringLiteral("\n%1 undone.").arg(QString::fromStdWString(undone.command).toUpper()));
    return RTNORM;
}

// X and Y scale, which must not be zero; an empty answer takes the default.
int askScale(DesktopShell& shell, const QString& prompt, double fallback, double& scale) {
    for (;;) {
        const int status = shell.editor().promptReal(prompt, scale);
        if (status == RTNONE) scale = fallback;
        if (status == RTCAN) return RTCAN;
        if (scale != 0.0) return RTNORM;
        shell.editor().print(QStringLiteral("\nValue must be nonzero."));
    }
}

// With ATTREQ on, each attribute's value is asked; an empty answer keeps its default.
int askAttributes(DesktopShell& shell, AcDbObjectId block, std::vector<std::wstring>& values) {
    resbuf attreq;
    if (shell.editor().getVar(L"ATTREQ", attreq) != RTNORM || attreq.resval.rint == 0)
        return RTNORM;
    const auto prompts = shell.drawing().document().attributePrompts(block);
    if (prompts.empty()) return RTNORM;
    shell.editor().print(QStringLiteral("\nEnter attribute values"));
    for (const DxfAttributePrompt& attribute : prompts) {
        const std::wstring& label = attribute.prompt.empty() ? attribute.tag : attribute.prompt;
        QString value;
        const int status =
            shell.editor().promptText(QStringLiteral("\n%1 <%2>: ")
                                          .arg(QString::fromStdWString(label),
                                               QString::fromStdWString(attribute.defaultValue)),
                                      value);
        if (status == RTCAN) return RTCAN;
        values.push_back(status == RTNONE ? attribute.defaultValue : value.toStdWString());
    }
    return RTNORM;
}

int insertCommand(DesktopShell& shell) {
    DesktopEditor& editor = shell.editor();
    DxfDocument& document = shell.drawing().document();
    QString name;
    if (editor.promptText(QStringLiteral("\nEnter block name: "), name) != RTNORM) return RTCAN;
    AcDbBlockReference reference;
    if (document.getBlockTableRecordId(name.toStdWString(), reference.blockTableRecord) !=
        Acad::eOk) {
        editor.print(QStringLiteral("\nBlock \"%1\" not found.").arg(name));
        return RTERROR;
    }
    if (editor.promptPoint(QStringLiteral("\nSpecify insertion point: "), nullptr,
                           reference.position) != RTNORM)
        return RTCAN;
    double sx = 1.0;
    double sy = 1.0;
    double degrees = 0.0;
    if (askScale(shell, QStringLiteral("\nEnter X scale factor <1>: "), 1.0, sx) != RTNORM ||
        askScale(shell, QStringLiteral("\nEnter Y scale factor <use X scale factor>: "), sx, sy) !=
            RTNORM)
        return RTCAN;
    const int angle = editor.promptReal(QStringLiteral("\nSpecify rotation angle <0>: "), degrees);
    if (angle == RTCAN) return RTCAN;
    if (angle == RTNONE) degrees = 0.0;
    reference.scaleFactors = {sx, sy, 1.0};
    reference.rotation = degrees * std::numbers::pi / 180.0;
    std::vector<std::wstring> values;
    if (askAttributes(shell, reference.blockTableRecord, values) != RTNORM) return RTCAN;
    AcDbObjectId id;
    const std::uint64_t editsBefore = document.editCount();
    if (document.insertBlockReference(reference, values, id) != Acad::eOk) {
        editor.print(QStringLiteral("\nBlock \"%1\" cannot be inserted.").arg(name));
        return RTERROR;
    }
    shell.drawing().noteInsert(editsBefore);
    shell.surface().entityAdded(id);
    return RTNORM;
}

int appLoadCommand(DesktopShell& shell) {
    const auto path = askFile(shell, L"Load Application", {}, L"arx", kExistingFile);
    if (!path) return RTCAN;
    return shell.loadModule(*path) ? RTNORM : RTERROR;
}

int arxCommand(DesktopShell& shell) {
    DesktopEditor& editor = shell.editor();
    QString option;
    if (editor.promptText(QStringLiteral("\nEnter an option [?/Load/Unload]: "), option) != RTNORM)
        return RTCAN;
    if (option == QLatin1String("?")) {
        for (const ModuleRecord* module : shell.modules().modules())
            editor.print(
                QStringLiteral("\n%1").arg(QString::fromStdString(module->path().string())));
        return RTNORM;
    }
    if (isOneOf(option, {"L", "LOAD"})) {
        const auto path = askFile(shell, L"Runtime extension file", {}, L"arx", kExistingFile);
        if (!path) return RTCAN;
        return shell.loadModule(*path) ? RTNORM : RTERROR;
    }
    if (isOneOf(option, {"U", "UNLOAD"})) {
        QString name;
        if (editor.promptText(QStringLiteral("\nEnter ARX file name to unload: "), name) != RTNORM)
            return RTCAN;
        return shell.unloadModule(name) ? RTNORM : RTERROR;
    }
    editor.print(QStringLiteral("\nInvalid option keyword."));
    return RTERROR;
}

int scriptCommand(DesktopShell& shell) {
    const auto path = askFile(shell, L"Select Script File", {}, L"scr", kExistingFile);
    if (!path) return RTCAN;
    return shell.startScript(*path) ? RTNORM : RTERROR;
}

// Selection on its own, to see what picks, windows and crossings take.
int selectCommand(DesktopShell& shell) {
    std::vector<AcDbObjectId> selected;
    const int status = shell.editor().selectObjects(nullptr, nullptr, selected);
    if (status == RTNORM)
        shell.editor().print(QStringLiteral("\n%1 selected").arg(selected.size()));
    return status;
}

int setVarCommand(DesktopShell& shell) {
    QString name;
    if (shell.editor().promptText(QStringLiteral("\nEnter variable name: "), name) != RTNORM)
        return RTCAN;
    return shell.runCommand(name);
}

constexpr BuiltinCommand kCommands[] = {
    {"APPLOAD", false, appLoadCommand}, {"ARX", false, arxCommand},
    {"CLOSE", false, closeCommand},     {"EXIT", false, quitCommand},
    {"INSERT", false, insertCommand},   {"NEW", false, newCommand},
    {"OPEN", false, openCommand},       {"QUIT", false, quitCommand},
    {"REDRAW", true, redrawCommand},    {"SAVE", false, saveCommand},
    {"SAVEAS", false, saveAsCommand},   {"SCRIPT", false, scriptCommand},
    {"SELECT", false, selectCommand},   {"SETVAR", true, setVarCommand},
    {"U", false, undoCommand},          {"UNDO", false, undoCommand},
    {"ZOOM", true, zoomCommand},
};

}  // namespace

std::span<const BuiltinCommand> builtinCommands() { return kCommands; }

const BuiltinCommand* findBuiltinCommand(const QString& name) {
    const QString key = name.trimmed().toUpper();
    for (const BuiltinCommand& command : kCommands) {
        if (key == QLatin1String(command.name)) return &command;
    }
    return nullptr;
}
