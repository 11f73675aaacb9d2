// The sheet tabs.
#include "grid/CUGTab.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "grid/CUGCtrl.h"
#include "grid/UGPalette.h"
#include "grid/UGSysColor.h"

namespace {

constexpr int kEdge = 4;
constexpr int kPadding = 10;

}  // namespace

CUGTab::CUGTab(CUGCtrl* ctrl) : QWidget(ctrl), m_ctrl(ctrl) { setMouseTracking(true); }

int CUGTab::AddTab(const QString& label, long id) {
    m_tabs.push_back({label, id});
    if (m_currentId < 0) m_currentId = id;
    update();
    return 0;
}

int CUGTab::DeleteTab(long id) {
    const auto it = std::find_if(m_tabs.begin(), m_tabs.end(), [id](const Tab& t) { return t.id == id; });
    if (it == m_tabs.end()) return 1;
    m_tabs.erase(it);
    if (m_currentId == id) m_currentId = m_tabs.empty() ? -1 : m_tabs.front().id;
    update();
    return 0;
}

int CUGTab::SetCurrentTab(long id) {
    m_currentId = id;
    update();
    return 0;
}

int CUGTab::TabWidth(const Tab& tab) const {
    return fontMetrics().horizontalAdvance(tab.label) + 2 * kPadding;
}

int CUGTab::TabAt(int x) const {
    for (int i = 0, left = 0; i < static_cast<int>(m_tabs.size()); ++i) {
        left += TabWidth(m_tabs[static_cast<std::size_t>(i)]);
        if (x < left) return i;
    }
    return -1;
}

bool CUGTab::OnEdge(int x) const { return x >= width() - kEdge; }

void CUGTab::paintEvent(QPaintEvent*) {
    QPainter dc(this);
    const QColor face = UGToQColor(m_ctrl->OnQueryBackColor(UG_TAB));
    const QColor shadow = UGBlend(face, UGToQColor(GetSysColor(COLOR_BTNSHADOW)), 0.6);
    dc.fillRect(rect(), face);
    int left = 0;
    for (const Tab& tab : m_tabs) {
        const QRect area(left, 0, TabWidth(tab), height() - 1);
        if (tab.id == m_currentId) {
            dc.fillRect(area, UGToQColor(GetSysColor(COLOR_WINDOW)));
            dc.fillRect(QRect(area.left(), area.bottom() - 1, area.width(), 2),
                        UGToQColor(GetSysColor(COLOR_HIGHLIGHT)));
        }
        dc.setPen(UGToQColor(GetSysColor(COLOR_BTNTEXT)));
        dc.drawText(area, Qt::AlignCenter, tab.label);
        dc.fillRect(QRect(area.right(), 2, 1, height() - 4), shadow);
        left += area.width();
    }
    dc.fillRect(QRect(width() - 2, 0, 2, height()), shadow);
}

void CUGTab::mousePressEvent(QMouseEvent* event) {
    const int x = event->position().toPoint().x();
    if (event->button() != Qt::LeftButton) return;
    if (OnEdge(x)) {
        m_sizing = true;
        return;
    }
    const int index = TabAt(x);
    if (index < 0) return;
    m_currentId = m_tabs[static_cast<std::size_t>(index)].id;
    update();
    m_ctrl->OnTabSelected(m_currentId);
}

void CUGTab::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (!m_sizing) {
        setCursor(OnEdge(point.x()) ? Qt::SplitHCursor : Qt::ArrowCursor);
        return;
    }
    const QPoint inCtrl = mapTo(m_ctrl, point);
    m_ctrl->OnTabsSizing(inCtrl.x(), inCtrl.y());
    m_ctrl->m_tabSizing = 1;
    m_ctrl->SetTabWidth(std::max(0, point.x() + 1));
}

void CUGTab::mouseReleaseEvent(QMouseEvent*) {
    if (!m_sizing) return;
    m_sizing = false;
    m_ctrl->m_tabSizing = 0;
    m_ctrl->AdjustComponentSizes();
}
