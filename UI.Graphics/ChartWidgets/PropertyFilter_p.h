#pragma once
// The rows of the property tree that a filter text picks: those whose name or
// value holds the text (in any case), with their ancestors, so the user sees
// where a match sits, and with their descendants, so a matching node still
// shows its properties. Roles pass through untouched, so the delegate reads
// the model's editor hints through it.

#include <QSortFilterProxyModel>

namespace Orv::Chart {

class PropertyFilter : public QSortFilterProxyModel {
public:
    explicit PropertyFilter(QObject* parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString& text);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    bool matches(int sourceRow, const QModelIndex& sourceParent) const;

    QString m_text;
};

} // namespace Orv::Chart
