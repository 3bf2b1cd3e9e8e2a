#pragma once
// The accessible interfaces of a chart widget (see ChartAccessible.h): the
// widget's own and the light ones of its parts.

#include "ChartWidget.h"
#include "OrvChartWidgetsExport.h"

#include <QAccessibleWidget>
#include <QPointer>

#include <cstddef>
#include <map>
#include <memory>
#include <tuple>
#include <vector>

namespace Orv::Chart {

// A child of the chart: an axis by its side, a series by its cache position,
// or the point under the keyboard cursor.
struct ChartPart {
    enum class Kind { Axis, Series, Point };

    Kind kind;
    std::size_t index = 0;

    bool operator==(const ChartPart& other) const { return kind == other.kind && index == other.index; }
    bool operator<(const ChartPart& other) const { return std::tie(kind, index) < std::tie(other.kind, other.index); }
};

// The children the widget shows now, in order.
std::vector<ChartPart> chartPartsOf(const ChartWidget& widget);

// Where the interfaces send their events: QAccessible::updateAccessibility,
// which drops them while no reader is active, or a listener in its place
// (tests, which run without one). Null restores the default; returns the one before.
using ChartAnnouncer = void (*)(QAccessibleEvent* event);
ORV_CHARTWIDGETS_EXPORT ChartAnnouncer setChartAnnouncer(ChartAnnouncer announcer);

class ChartAccessible : public QAccessibleWidget {
public:
    explicit ChartAccessible(ChartWidget* widget);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QString text(QAccessible::Text t) const override;

protected:
    // Deletes the parts' interfaces from QAccessible's cache.
    ~ChartAccessible() override;

private:
    ChartWidget* chartWidget() const;
    // The part's interface, made and registered on first use; it lives as long as this one.
    QAccessibleInterface* part(ChartPart key) const;
    void announce(QAccessibleInterface* target, QAccessible::Event event) const;
    // Tells a new set of children, or another chart, as a reorder and new texts.
    void checkParts();
    void cursorMoved();
    void rangesChanged();

    mutable std::map<ChartPart, QAccessible::Id> m_parts;
    // What was last told: the chart, its children and whether the cursor was on a point.
    const KelChart* m_chart = nullptr;
    std::vector<ChartPart> m_shown;
    bool m_onPoint = false;
    // Receives the widget's signals; deleting it ends the connections.
    std::unique_ptr<QObject> m_listener;
};

class ChartPartAccessible : public QAccessibleInterface {
public:
    ChartPartAccessible(ChartWidget* widget, ChartPart key);

    ChartWidget* chartWidget() const { return m_widget; }
    ChartPart key() const { return m_key; }

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;

private:
    const PlotAxis* axis() const;
    QString axisText(QAccessible::Text t) const;
    QString seriesText(QAccessible::Text t) const;
    QString pointText(QAccessible::Text t) const;
    // Where the part is drawn, in the widget's pixels; empty where nowhere.
    QRectF area() const;
    QRectF seriesArea() const;
    QRectF pointArea() const;

    QPointer<ChartWidget> m_widget;
    ChartPart m_key;
};

} // namespace Orv::Chart
