#pragma once
// The window's live mode: the chart of a live source's table, drawn from a
// LiveFeed as items arrive, with a "Live" menu and tool bar: Pause/Resume
// (also the Space key), the items kept per series and the width the x axis
// follows as fields bound to the feed's settings, and a status line with the
// items and frames drawn per second. The source's remarks on its data, its
// end and its faults go to the message bar. Another file opened in the
// window ends the live mode.

#include "ChartDocument.h"
#include "LiveSource.h"

#include <QElapsedTimer>
#include <QObject>

#include <cstdint>
#include <memory>

class QAction;
class QDoubleSpinBox;
class QLabel;
class QSpinBox;
class QTimer;
class QToolBar;

namespace kelview {

class ViewWindow;

class LiveView : public QObject {
    Q_OBJECT
public:
    // How often the status line measures.
    static constexpr int measureMs = 1000;

    // Starts the source; a child of the window, which shows `waiting` until the source's table is known.
    LiveView(ViewWindow& window, std::unique_ptr<LiveSource> source, const LiveOptions& options);
    ~LiveView() override;

    // What a window shows while the table of the source of that name is still to come.
    static std::unique_ptr<ChartDocument> waiting(const QString& sourceName);

    // Null until the table is known, and after the live mode ended.
    Orv::Chart::LiveFeed* feed() const { return m_feed.get(); }
    QAction* pauseAction() const { return m_pause; }
    QSpinBox* limitField() const { return m_limit; }
    QDoubleSpinBox* followField() const { return m_follow; }
    QString statusText() const;

private:
    void buildControls();
    void buildToolBar();
    void connectSource();
    void showTable(const Orv::Chart::DataSet& table);
    std::vector<std::size_t> feedPositions(const Orv::Chart::DataSet& table) const;
    void bindFields();
    void showSettings();
    void measure();
    void end();

    ViewWindow& m_window;
    std::unique_ptr<LiveSource> m_source;
    std::unique_ptr<Orv::Chart::LiveFeed> m_feed;
    LiveOptions m_options;
    QAction* m_pause = nullptr;
    QSpinBox* m_limit = nullptr;
    QDoubleSpinBox* m_follow = nullptr;
    QToolBar* m_toolBar = nullptr;
    QLabel* m_status = nullptr;
    QTimer* m_meter = nullptr;
    QElapsedTimer m_clock;
    std::uint64_t m_items = 0;
    std::uint64_t m_frames = 0;
    // While the window swaps the waiting chart for the table's, the live mode goes on.
    bool m_replacing = false;
};

} // namespace kelview
