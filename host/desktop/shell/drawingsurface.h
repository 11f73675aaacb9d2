// What the editor and the shell's commands need of the drawing view: vectors drawn over the
// drawing, the look of a selection, zoom, and hit tests in drawing units. The view's widget
// implements it; the shell never sees more of the view than this.
#pragma once

#include <optional>
#include <vector>

#include "host/api/acdbobjectid.h"
#include "host/api/acgepoint3d.h"
#include "host/desktop/session/selectionfilter.h"

class DxfDocument;

class DrawingSurface {
public:
    virtual ~DrawingSurface() = default;

    // The drawing to show; null while none is open. The surface reads it, never changes it.
    virtual void setDocument(const DxfDocument* document) = 0;
    virtual void entityAdded(AcDbObjectId id) = 0;
    virtual void entityRemoved(AcDbObjectId id) = 0;
    // The drawing changed in ways the two above do not tell (a block drawn again, a command
    // undone): it is read again, and the view stays where it was.
    virtual void reload() = 0;

    // A vector of acedGrDraw. Colour -1 is exclusive-or ink: the same vector drawn twice is gone.
    // Other colours stay until the vectors are cleared (a redraw or a zoom).
    virtual void drawVector(const AcGePoint3d& from, const AcGePoint3d& to, int color,
                            bool highlight) = 0;
    virtual void clearVectors() = 0;

    // The rectangle of a window (solid) or crossing (dashed) selection while its corner moves.
    virtual void showSelectionRectangle(const AcGePoint3d& a, const AcGePoint3d& b,
                                        bool crossing) = 0;
    virtual void hideSelectionRectangle() = 0;
    virtual void setHighlighted(const std::vector<AcDbObjectId>& ids) = 0;

    virtual void zoomExtents() = 0;
    virtual void zoomWindow(const AcGePoint3d& a, const AcGePoint3d& b) = 0;
    // Above 1 brings the drawing nearer, about the centre of the view.
    virtual void zoomFactor(double factor) = 0;

    // Hit tests narrowed by the filter's entity types: the entity nearest the point within the
    // pick box, entities wholly inside a window, entities inside or crossing it, every entity.
    virtual std::optional<AcDbObjectId> pick(const AcGePoint3d& at,
                                             const SelectionFilter& filter) const = 0;
    virtual std::vector<AcDbObjectId> window(const AcGePoint3d& a, const AcGePoint3d& b,
                                             const SelectionFilter& filter) const = 0;
    virtual std::vector<AcDbObjectId> crossing(const AcGePoint3d& a, const AcGePoint3d& b,
                                               const SelectionFilter& filter) const = 0;
    virtual std::vector<AcDbObjectId> all(const SelectionFilter& filter) const = 0;
};
