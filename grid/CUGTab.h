// The sheet tabs, bottom left beside the horizontal scroll bar: a click on a tab reports its id
// through OnTabSelected; dragging the right edge sizes the strip (OnTabsSizing).
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

class CUGCtrl;

class CUGTab final : public QWidget {
    Q_OBJECT

public:
    explicit CUGTab(CUGCtrl* ctrl);

    int AddTab(const QString& label, long id);
    int DeleteTab(long id);  // 1 for an unknown id
    int SetCurrentTab(long id);
    int GetTabCount() const { return static_cast<int>(m_tabs.size()); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Tab {
        QString label;
        long id;
    };

    int TabWidth(const Tab& tab) const;
    int TabAt(int x) const;  // index, or -1
    bool OnEdge(int x) const;

    CUGCtrl* m_ctrl;
    std::vector<Tab> m_tabs;
    long m_currentId = -1;
    bool m_sizing = false;
};
