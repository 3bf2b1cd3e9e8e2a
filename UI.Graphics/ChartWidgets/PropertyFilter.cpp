#include "PropertyFilter_p.h"

#include "KelChartPropertyModel.h"

namespace Orv::Chart {

PropertyFilter::PropertyFilter(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    // A row also shows when one of its descendants matches.
    setRecursiveFilteringEnabled(true);
}

void PropertyFilter::setText(const QString& text)
{
    if (text == m_text)
        return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 10, 0)
    beginFilterChange();
    m_text = text;
    endFilterChange(QSortFilterProxyModel::Direction::Rows);
#else
    m_text = text;
    invalidateFilter();
#endif
}

bool PropertyFilter::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (m_text.isEmpty() || matches(sourceRow, sourceParent))
        return true;
    for (QModelIndex ancestor = sourceParent; ancestor.isValid(); ancestor = ancestor.parent()) {
        if (matches(ancestor.row(), ancestor.parent()))
            return true;
    }
    return false;
}

bool PropertyFilter::matches(int sourceRow, const QModelIndex& sourceParent) const
{
    for (const int column : {KelChartPropertyModel::NameColumn, KelChartPropertyModel::ValueColumn}) {
        const QModelIndex cell = sourceModel()->index(sourceRow, column, sourceParent);
        if (cell.data().toString().contains(m_text, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace Orv::Chart
