// The drawing view behind the editor.
#include "host/desktop/shell/viewsurface.h"

#include <QPointF>
#include <cmath>

#include "host/desktop/scene/drawingscene.h"
#include "host/desktop/view/drawingview.h"
#include "host/dxf/dxfdocument.h"

namespace {

ScenePoint scenePoint(const AcGePoint3d& point) { return {point.x, point.y}; }

SceneRect sceneRect(const AcGePoint3d& a, const AcGePoint3d& b) {
    return SceneRect::fromCorners(scenePoint(a), scenePoint(b));
}

std::string narrow(const std::wstring& text) {
    std::string out;
    out.reserve(text.size());
    for (const wchar_t c : text) out.push_back(c < 0x80 ? static_cast<char>(c) : '?');
    return out;
}

}  // namespace

ViewSurface::ViewSurface(DrawingView* view) : m_view(view) {}

ViewSurface::~ViewSurface() {
    if (m_view.isNull()) return;
    m_view->setScene(nullptr);
    delete m_view.data();
}

void ViewSurface::setDocument(const DxfDocument* document) {
    // The view lets go of the old scene before it goes.
    m_view->setScene(nullptr);
    m_scene.reset();
    m_selectionShown = false;
    if (document == nullptr) return;
    m_scene = std::make_unique<DrawingScene>(*document, DxfSpace::Model);
    m_view->setScene(m_scene.get());
}

void ViewSurface::entityAdded(AcDbObjectId id) {
    if (m_scene && m_scene->addEntity(id)) m_view->regen();
}

void ViewSurface::entityRemoved(AcDbObjectId id) {
    if (!m_scene || !m_scene->removeEntity(id)) return;
    std::vector<AcDbObjectId> highlighted = m_view->highlighted();
    if (std::erase(highlighted, id) != 0) m_view->setHighlighted(highlighted);
    m_view->regen();
}

void ViewSurface::reload() {
    if (!m_scene) return;
    const ViewTransform view = m_view->viewTransform();
    setDocument(&m_scene->document());
    m_view->setViewTransform(view);
}

void ViewSurface::drawVector(const AcGePoint3d& from, const AcGePoint3d& to, int color,
                             bool highlight) {
    m_view->drawVector(scenePoint(from), scenePoint(to), color, highlight);
}

void ViewSurface::clearVectors() { m_view->clearVectors(); }

void ViewSurface::showSelectionRectangle(const AcGePoint3d& a, const AcGePoint3d& b,
                                         bool crossing) {
    m_view->setSelectionRectangle(sceneRect(a, b), crossing);
    m_selectionShown = true;
    m_crossing = crossing;
}

void ViewSurface::hideSelectionRectangle() {
    m_view->clearSelectionRectangle();
    m_selectionShown = false;
}

void ViewSurface::setHighlighted(const std::vector<AcDbObjectId>& ids) {
    m_view->setHighlighted(ids);
}

void ViewSurface::zoomExtents() { m_view->zoomExtents(); }

void ViewSurface::zoomWindow(const AcGePoint3d& a, const AcGePoint3d& b) {
    const SceneRect rect = sceneRect(a, b);
    if (rect.width() <= 0.0 || rect.height() <= 0.0) return;
    m_view->zoomWindow(rect);
}

void ViewSurface::zoomFactor(double factor) {
    if (!(factor > 0.0) || !std::isfinite(factor)) return;
    m_view->zoomAbout(QPointF(m_view->width() / 2.0, m_view->height() / 2.0), factor);
}

std::string ViewSurface::sceneType(const SelectionFilter& filter) {
    if (filter.types.size() != 1) return {};
    const std::wstring& type = filter.types.front();
    if (type.empty() || type.find_first_of(L"*?#,~@.[]`") != std::wstring::npos) return {};
    return narrow(type);
}

bool ViewSurface::hasFilteredType(AcDbObjectId id, const SelectionFilter& filter) const {
    const auto index = m_scene->indexOf(id);
    if (!index) return false;
    const std::string& name = m_scene->types().name(m_scene->entity(*index).type);
    return filter.acceptsType(std::wstring(name.begin(), name.end()));
}

std::vector<AcDbObjectId> ViewSurface::ofFilteredTypes(std::vector<AcDbObjectId> ids,
                                                       const SelectionFilter& filter) const {
    if (filter.types.empty() || !sceneType(filter).empty()) return ids;
    std::erase_if(ids, [&](AcDbObjectId id) { return !hasFilteredType(id, filter); });
    return ids;
}

std::optional<AcDbObjectId> ViewSurface::pick(const AcGePoint3d& at,
                                              const SelectionFilter& filter) const {
    if (!m_scene) return std::nullopt;
    const double tolerance = kPickBoxPixels * m_view->unitsPerPixel();
    const auto found = m_scene->pick(scenePoint(at), tolerance, sceneType(filter));
    if (!found ||
        (sceneType(filter).empty() && !filter.types.empty() && !hasFilteredType(*found, filter)))
        return std::nullopt;
    return found;
}

std::vector<AcDbObjectId> ViewSurface::window(const AcGePoint3d& a, const AcGePoint3d& b,
                                              const SelectionFilter& filter) const {
    if (!m_scene) return {};
    return ofFilteredTypes(m_scene->windowSelect(sceneRect(a, b), sceneType(filter)), filter);
}

std::vector<AcDbObjectId> ViewSurface::crossing(const AcGePoint3d& a, const AcGePoint3d& b,
                                                const SelectionFilter& filter) const {
    if (!m_scene) return {};
    return ofFilteredTypes(m_scene->crossingSelect(sceneRect(a, b), sceneType(filter)), filter);
}

std::vector<AcDbObjectId> ViewSurface::all(const SelectionFilter& filter) const {
    if (!m_scene) return {};
    std::vector<AcDbObjectId> ids;
    for (std::size_t i = 0; i < m_scene->entityCount(); ++i) {
        const SceneEntity& entity = m_scene->entity(i);
        if (entity.selectable && !entity.removed) ids.push_back(entity.id);
    }
    if (filter.types.empty()) return ids;
    std::erase_if(ids, [&](AcDbObjectId id) { return !hasFilteredType(id, filter); });
    return ids;
}
