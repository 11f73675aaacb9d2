// The module's dialog templates by id.
#include "resources/DialogTemplate.h"

#include "resources/BomReportTemplate.h"
#include "resources/BomTemplate.h"

namespace {

const DialogTemplate* const kTemplates[] = {&kBomTemplate, &kBomReportTemplate};

}  // namespace

const DialogTemplate* FindDialogTemplate(int id) {
    for (const DialogTemplate* found : kTemplates) {
        if (found->id == id) return found;
    }
    return nullptr;
}
