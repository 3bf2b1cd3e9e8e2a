#include "UnsavedChanges.h"

#include "ChartWidget.h"

#include <QUndoStack>

namespace kelview {

bool mayDiscard(bool modified, const std::function<SaveAnswer()>& ask, const std::function<bool()>& save)
{
    if (!modified)
        return true;
    switch (ask()) {
    case SaveAnswer::Save:
        return save();
    case SaveAnswer::Discard:
        return true;
    case SaveAnswer::Cancel:
        break;
    }
    return false;
}

UnsavedChanges::UnsavedChanges(Orv::Chart::ChartWidget* chart, QUndoStack* edits, QObject* parent)
    : QObject(parent)
    , m_edits(edits)
{
    connect(chart, &Orv::Chart::ChartWidget::rangesChanged, this, &UnsavedChanges::viewChanged);
    connect(chart, &Orv::Chart::ChartWidget::seriesToggled, this, &UnsavedChanges::viewChanged);
    connect(edits, &QUndoStack::cleanChanged, this, [this] { Q_EMIT modifiedChanged(isModified()); });
}

bool UnsavedChanges::isModified() const
{
    return m_viewChanged || !m_edits->isClean();
}

void UnsavedChanges::markSaved()
{
    m_viewChanged = false;
    m_edits->setClean();
    Q_EMIT modifiedChanged(false);
}

void UnsavedChanges::viewChanged()
{
    if (m_viewChanged)
        return;
    m_viewChanged = true;
    Q_EMIT modifiedChanged(isModified());
}

} // namespace kelview
