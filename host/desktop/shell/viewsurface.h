// The drawing view behind the editor: the scene of a drawing's model space, shown in a DrawingView,
// with picks, windows and crossings answered by the scene's hit tests and the editor's vectors,
// selection rectangle and highlights drawn by the view.
#pragma once

#include <QPointer>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/desktop/shell/drawingsurface.h"

class DrawingScene;
class DrawingView;

class ViewSurface final : public DrawingSurface {
public:
    // Half the side of the pick box, in pixels: a pick takes the nearest entity this close.
    static constexpr double kPickBoxPixels = 4.0;

    // The surface owns the view: the view leaves the window with it.
    explicit ViewSurface(DrawingView* view);
    ~ViewSurface() override;
    ViewSurface(const ViewSurface&) = delete;
    ViewSurface& operator=(const ViewSurface&) = delete;

    DrawingView& view() { return *m_view; }
    const DrawingScene* scene() const { return m_scene.get(); }
    bool selectionRectangleShown() const { return m_selectionShown; }
    bool selectionIsCrossing() const { return m_crossing; }

    // DrawingSurface
    void setDocument(const DxfDocument* document) override;
    void entityAdded(AcDbObjectId id) override;
    void entityRemoved(AcDbObjectId id) override;
    void reload() override;
    void drawVector(const AcGePoint3d& from, const AcGePoint3d& to, int color,
                    bool highlight) override;
    void clearVectors() override;
    void showSelectionRectangle(const AcGePoint3d& a, const AcGePoint3d& b, bool crossing) override;
    void hideSelectionRectangle() override;
    void setHighlighted(const std::vector<AcDbObjectId>& ids) override;
    void zoomExtents() override;
    void zoomWindow(const AcGePoint3d& a, const AcGePoint3d& b) override;
    void zoomFactor(double factor) override;
    std::optional<AcDbObjectId> pick(const AcGePoint3d& at,
                                     const SelectionFilter& filter) const override;
    std::vector<AcDbObjectId> window(const AcGePoint3d& a, const AcGePoint3d& b,
                                     const SelectionFilter& filter) const override;
    std::vector<AcDbObjectId> crossing(const AcGePoint3d& a, const AcGePoint3d& b,
                                       const SelectionFilter& filter) const override;
    std::vector<AcDbObjectId> all(const SelectionFilter& filter) const override;

private:
    // The one type name the scene can narrow a hit test to, when the filter asks for exactly one
    // without wildcards; empty otherwise, and the filter's types are applied afterwards.
    static std::string sceneType(const SelectionFilter& filter);
    std::vector<AcDbObjectId> ofFilteredTypes(std::vector<AcDbObjectId> ids,
                                              const SelectionFilter& filter) const;
    bool hasFilteredType(AcDbObjectId id, const SelectionFilter& filter) const;

    // Guarded: a window that goes first takes its child widgets with it.
    QPointer<DrawingView> m_view;
    std::unique_ptr<DrawingScene> m_scene;
    bool m_selectionShown = false;
    bool m_crossing = false;
};
