#include "LiveView.h"

#include "ChartWidget.h"
#include "LiveFeed.h"
#include "MessageBar.h"
#include "ViewWindow.h"

#include <QAction>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include <algorithm>
#include <climits>

namespace kelview {

using Orv::Chart::LiveFeed;

LiveView::LiveView(ViewWindow& window, std::unique_ptr<LiveSource> source, const LiveOptions& options)
    : QObject(&window)
    , m_window(window)
    , m_source(std::move(source))
    , m_options(options)
{
    buildControls();
    connectSource();
    connect(&m_window, &ViewWindow::documentReleasing, this, [this] {
        if (!m_replacing)
            end();
    });
    m_status->setText(tr("Waiting for %1").arg(m_source->name()));
    m_source->start();
}

LiveView::~LiveView()
{
    end();
}

std::unique_ptr<ChartDocument> LiveView::waiting(const QString& sourceName)
{
    Orv::Chart::DataSet nothing;
    nothing.notes << tr("Waiting for the first rows from %1").arg(sourceName);
    return ChartDocument::forLive(nothing, sourceName);
}

void LiveView::buildControls()
{
    m_pause = new QAction(QIcon::fromTheme(QStringLiteral("media-playback-pause")), tr("&Pause"), this);
    m_pause->setCheckable(true);
    m_pause->setShortcut(Qt::Key_Space);
    m_pause->setToolTip(tr("Hold the view still while items keep arriving (Space)"));
    m_pause->setEnabled(false);
    QMenu* menu = m_window.menuBar()->addMenu(tr("&Live"));
    menu->addAction(m_pause);
    buildToolBar();
    m_status = new QLabel;
    m_status->setTextFormat(Qt::PlainText);
    m_window.statusBar()->addPermanentWidget(m_status);
    m_meter = new QTimer(this);
    m_meter->setInterval(measureMs);
    connect(m_meter, &QTimer::timeout, this, &LiveView::measure);
}

void LiveView::buildToolBar()
{
    m_toolBar = m_window.addToolBar(tr("Live"));
    m_toolBar->setObjectName(QStringLiteral("live"));
    m_toolBar->addAction(m_pause);
    m_limit = new QSpinBox;
    m_limit->setRange(0, INT_MAX);
    m_limit->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    m_limit->setSpecialValueText(tr("all"));
    m_limit->setSuffix(tr(" items"));
    m_limit->setKeyboardTracking(false);
    m_limit->setToolTip(tr("Items kept per series, the oldest dropped first"));
    m_follow = new QDoubleSpinBox;
    m_follow->setRange(0.0, 1e9);
    m_follow->setDecimals(1);
    m_follow->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    m_follow->setSpecialValueText(tr("off"));
    m_follow->setKeyboardTracking(false);
    m_follow->setToolTip(tr("The x axis shows the newest stretch of this width and follows it"));
    m_limit->setValue(static_cast<int>(std::min<std::size_t>(m_options.limit, INT_MAX)));
    m_follow->setValue(m_options.follow);
    m_toolBar->addWidget(new QLabel(tr(" Keep ")));
    m_toolBar->addWidget(m_limit);
    m_toolBar->addWidget(new QLabel(tr(" Follow ")));
    m_toolBar->addWidget(m_follow);
    m_toolBar->setEnabled(false);
}

void LiveView::connectSource()
{
    connect(m_source.get(), &LiveSource::ready, this, &LiveView::showTable);
    connect(m_source.get(), &LiveSource::remark, this,
            [this](const QString& text) { m_window.messageBar()->add(text); });
    connect(m_source.get(), &LiveSource::ended, this, [this](const QString& text) {
        // The last rows were posted before the end was told: draw them now, not a frame later.
        if (m_feed)
            m_feed->drain();
        m_window.messageBar()->add(text);
        m_status->setText(text);
        m_meter->stop();
    });
    connect(m_source.get(), &LiveSource::failed, this, [this](const QString& text) {
        m_window.messageBar()->showMessage(MessageBar::Level::Fault, {text});
        m_status->setText(text);
        m_meter->stop();
    });
}

// The chart for the table, its first rows bound, and the feed that draws the items from now on.
void LiveView::showTable(const Orv::Chart::DataSet& table)
{
    m_replacing = true;
    m_window.replaceDocument(ChartDocument::forLive(
        table, m_source->name(), [this](auto& variables, auto& pairs) { return m_source->bind(variables, pairs); }));
    m_replacing = false;
    m_feed = std::make_unique<LiveFeed>(*m_window.chartView(), m_options.limit);
    m_feed->setFollowWidth(m_options.follow);
    const QString xUnit = table.series.empty() ? QString() : table.series.front().x.unit;
    m_follow->setSuffix(xUnit.isEmpty() ? QString() : QStringLiteral(" ") + xUnit.section(QLatin1Char(' '), 0, 0));
    bindFields();
    m_source->feed(*m_feed, feedPositions(table));
    m_status->setText(tr("Live"));
    m_clock.start();
    m_meter->start();
}

// Where each of the table's series is in the chart's variable list, which the feed counts by.
std::vector<std::size_t> LiveView::feedPositions(const Orv::Chart::DataSet& table) const
{
    const KelChartVariableList& variables = m_window.document().chart()->variables;
    std::vector<std::size_t> positions;
    for (const Orv::Chart::DataSeries& series : table.series) {
        positions.push_back(LiveSource::noSeries);
        for (unsigned i = 0; i < variables.size(); ++i)
            if (variables.at(i)->name() == series.y.name)
                positions.back() = i;
    }
    return positions;
}

void LiveView::bindFields()
{
    connect(m_pause, &QAction::toggled, m_feed.get(), &LiveFeed::setPaused);
    connect(m_limit, QOverload<int>::of(&QSpinBox::valueChanged), m_feed.get(),
            [this](int items) { m_feed->setLimit(static_cast<std::size_t>(items)); });
    connect(m_follow, QOverload<double>::of(&QDoubleSpinBox::valueChanged), m_feed.get(), &LiveFeed::setFollowWidth);
    connect(m_feed.get(), &LiveFeed::settingsChanged, this, &LiveView::showSettings);
    showSettings();
    m_pause->setEnabled(true);
    m_toolBar->setEnabled(true);
}

// The fields as the feed has them, whoever changed them.
void LiveView::showSettings()
{
    const QSignalBlocker pauseBlocker(m_pause);
    const QSignalBlocker limitBlocker(m_limit);
    const QSignalBlocker followBlocker(m_follow);
    m_pause->setChecked(m_feed->paused());
    m_pause->setText(m_feed->paused() ? tr("&Resume") : tr("&Pause"));
    m_pause->setIcon(QIcon::fromTheme(m_feed->paused() ? QStringLiteral("media-playback-start")
                                                       : QStringLiteral("media-playback-pause")));
    m_limit->setValue(static_cast<int>(std::min<std::size_t>(m_feed->limit(), INT_MAX)));
    m_follow->setValue(m_feed->followWidth());
}

void LiveView::measure()
{
    if (!m_feed)
        return;
    const double seconds = std::max(1e-3, static_cast<double>(m_clock.restart()) / 1000.0);
    const std::uint64_t items = m_feed->itemsAppended();
    const std::uint64_t frames = m_feed->framesDrawn();
    m_status->setText(tr("%L1 items/s, %L2 frames/s")
                          .arg(static_cast<double>(items - m_items) / seconds, 0, 'f', 0)
                          .arg(static_cast<double>(frames - m_frames) / seconds, 0, 'f', 0));
    m_items = items;
    m_frames = frames;
}

QString LiveView::statusText() const
{
    return m_status->text();
}

// The source stops before the feed goes: its thread posts to the feed.
void LiveView::end()
{
    if (!m_source)
        return;
    m_source->stop();
    m_feed.reset();
    m_source.reset();
    m_meter->stop();
    m_pause->setEnabled(false);
    m_toolBar->setEnabled(false);
}

} // namespace kelview
