#include "KelChartPropertyModel.h"

#include "KelChartPropertyChecks.h"
#include "KelChartPropertyChoices.h"
#include "KelProperties.h"
#include "view_ptr.h"

#include <QColor>
#include <QStringList>

#include <algorithm>
#include <utility>
#include <vector>

// One row of the mirror. Node rows keep a view pointer to the node they show,
// so a node that died unannounced reads as null instead of dangling.
struct KelChartPropertyModel::Row {
    Row* parent = nullptr;
    kel::view_ptr<KelProperties> holder;
    kel::view_ptr<KelProperties> shown;
    // Identity of the shown node for matching only; never dereferenced.
    const KelProperties* identity = nullptr;
    bool isNode = false;
    // Texts as last read, so a refresh can tell what changed.
    QString name;
    QString value;
    QString unit;
    bool hasValue = false;
    std::vector<std::unique_ptr<Row>> rows;

    bool sameEntry(const Row& other) const
    {
        if (isNode != other.isNode)
            return false;
        if (!isNode)
            return name == other.name;
        return identity == other.identity && shown && other.shown;
    }

    int position() const
    {
        const auto& siblings = parent->rows;
        const auto it = std::find_if(siblings.begin(), siblings.end(),
                                     [this](const std::unique_ptr<Row>& row) { return row.get() == this; });
        return static_cast<int>(it - siblings.begin());
    }

    // Reads name, value and unit afresh; true when any of them changed.
    bool readTexts()
    {
        QString newName = name;
        QString newValue;
        QString newUnit;
        bool newHasValue = false;
        if (isNode && shown)
            newName = shown->name();
        if (const KelProperties* node = holder.get()) {
            newHasValue = node->getValue(newName, newValue, QString()).isEmpty();
            if (newHasValue)
                newUnit = node->string().getUnit(newName, QString());
        }
        const bool changed = newName != name || newValue != value || newUnit != unit || newHasValue != hasValue;
        name = std::move(newName);
        value = std::move(newValue);
        unit = std::move(newUnit);
        hasValue = newHasValue;
        return changed;
    }

    // The rows the shown node has now: its properties, then its children.
    std::vector<std::unique_ptr<Row>> currentEntries()
    {
        std::vector<std::unique_ptr<Row>> entries;
        KelProperties* node = shown.get();
        if (!node)
            return entries;
        for (const QString& property : node->string().names()) {
            auto row = std::make_unique<Row>();
            row->parent = this;
            row->holder = kel::view_ptr<KelProperties>(node);
            row->name = property;
            entries.push_back(std::move(row));
        }
        for (unsigned i = 0; i < node->size(); ++i) {
            KelProperties* child = node->at(i);
            auto row = std::make_unique<Row>();
            row->parent = this;
            row->holder = kel::view_ptr<KelProperties>(node);
            row->shown = kel::view_ptr<KelProperties>(child);
            row->identity = child;
            row->isNode = true;
            entries.push_back(std::move(row));
        }
        return entries;
    }

    // Builds the subtree of a row that no view has seen yet.
    void populate()
    {
        readTexts();
        rows = currentEntries();
        for (const auto& row : rows)
            row->populate();
    }

    QString path() const
    {
        QStringList names;
        for (const Row* row = this; row->parent; row = row->parent)
            names.prepend(row->name);
        return names.join(QLatin1Char('/'));
    }

    Kind kind() const
    {
        const KelProperties* node = holder.get();
        if (!node || !hasValue)
            return NoValue;
        if (!KelChartPropertyChoices::words(*node, name).isEmpty())
            return KelChartPropertyChoices::isList(*node, name) ? ChoiceList : Choice;
        const QString type = node->string().valueType(name);
        if (type == QLatin1String("bool"))
            return Bool;
        if (type == QLatin1String("color"))
            return Colour;
        if (type == QLatin1String("int") || type == QLatin1String("unsigned"))
            return Integer;
        if (type == QLatin1String("double"))
            return Number;
        return Text;
    }
};

KelChartPropertyModel::KelChartPropertyModel(QObject* parent)
    : QAbstractItemModel(parent)
{
}

KelChartPropertyModel::KelChartPropertyModel(KelProperties* root, QObject* parent)
    : QAbstractItemModel(parent)
{
    setRoot(root);
}

KelChartPropertyModel::~KelChartPropertyModel() = default;

KelProperties* KelChartPropertyModel::root() const
{
    return m_top ? m_top->shown.get() : nullptr;
}

void KelChartPropertyModel::setRoot(KelProperties* root)
{
    beginResetModel();
    m_top.reset();
    if (root) {
        m_top = std::make_unique<Row>();
        m_top->shown = kel::view_ptr<KelProperties>(root);
        m_top->identity = root;
        m_top->isNode = true;
        m_top->populate();
    }
    endResetModel();
}

void KelChartPropertyModel::refresh()
{
    if (m_top)
        sync(*m_top);
}

KelProperties* KelChartPropertyModel::holder(const QModelIndex& index) const
{
    const Row* row = rowOf(index);
    return row ? row->holder.get() : nullptr;
}

QString KelChartPropertyModel::propertyName(const QModelIndex& index) const
{
    const Row* row = rowOf(index);
    return row ? row->name : QString();
}

KelProperties* KelChartPropertyModel::node(const QModelIndex& index) const
{
    const Row* row = rowOf(index);
    return row ? row->shown.get() : nullptr;
}

QString KelChartPropertyModel::lastError() const
{
    return m_lastError;
}

QModelIndex KelChartPropertyModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, rowOrTop(parent)->rows[static_cast<unsigned>(row)].get());
}

QModelIndex KelChartPropertyModel::parent(const QModelIndex& child) const
{
    const Row* row = rowOf(child);
    if (!row || row->parent == m_top.get())
        return {};
    return indexOf(*row->parent, NameColumn);
}

int KelChartPropertyModel::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0)
        return 0;
    const Row* row = rowOrTop(parent);
    return row ? static_cast<int>(row->rows.size()) : 0;
}

int KelChartPropertyModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

QVariant KelChartPropertyModel::data(const QModelIndex& index, int role) const
{
    const Row* row = rowOf(index);
    if (!row)
        return {};
    switch (role) {
    case KindRole:
        return static_cast<int>(row->kind());
    case ChoicesRole:
        return row->holder ? KelChartPropertyChoices::words(*row->holder, row->name) : QStringList();
    case ValueTypeRole:
        return row->holder && row->hasValue ? row->holder->string().valueType(row->name) : QString();
    case PathRole:
        return row->path();
    default:
        break;
    }
    const bool text = role == Qt::DisplayRole || role == Qt::EditRole;
    if (index.column() == NameColumn && role == Qt::ToolTipRole)
        return row->path();
    if (index.column() == NameColumn)
        return text ? QVariant(row->name) : QVariant();
    if (index.column() == UnitColumn)
        return text && row->hasValue ? QVariant(row->unit) : QVariant();
    return valueData(*row, role);
}

QVariant KelChartPropertyModel::valueData(const Row& row, int role) const
{
    if (!row.hasValue)
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return row.value;
    const Kind kind = row.kind();
    if (role == Qt::CheckStateRole && kind == Bool)
        return row.value == QLatin1String("true") ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::DecorationRole && kind == Colour) {
        QColor colour;
        row.holder->string().getValue(row.name, colour, QColor());
        return colour;
    }
    return {};
}

bool KelChartPropertyModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const Row* row = rowOf(index);
    if (!row || index.column() != ValueColumn)
        return false;
    if (role == Qt::EditRole)
        return write(index, value.toString());
    if (role == Qt::CheckStateRole && row->kind() == Bool) {
        const bool checked = value.toInt() == Qt::Checked;
        return write(index, checked ? QStringLiteral("true") : QStringLiteral("false"));
    }
    return false;
}

Qt::ItemFlags KelChartPropertyModel::flags(const QModelIndex& index) const
{
    const Row* row = rowOf(index);
    if (!row)
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!row->isNode)
        flags |= Qt::ItemNeverHasChildren;
    if (index.column() != ValueColumn || !row->hasValue || !row->holder)
        return flags;
    flags |= Qt::ItemIsEditable;
    if (row->kind() == Bool)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

QVariant KelChartPropertyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case NameColumn:
        return tr("Name");
    case ValueColumn:
        return tr("Value");
    case UnitColumn:
        return tr("Unit");
    default:
        return {};
    }
}

QHash<int, QByteArray> KelChartPropertyModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractItemModel::roleNames();
    names.insert(KindRole, QByteArrayLiteral("kind"));
    names.insert(ChoicesRole, QByteArrayLiteral("choices"));
    names.insert(ValueTypeRole, QByteArrayLiteral("valueType"));
    names.insert(PathRole, QByteArrayLiteral("path"));
    return names;
}

KelChartPropertyModel::Row* KelChartPropertyModel::rowOf(const QModelIndex& index) const
{
    if (!index.isValid() || index.model() != this)
        return nullptr;
    return static_cast<Row*>(index.internalPointer());
}

KelChartPropertyModel::Row* KelChartPropertyModel::rowOrTop(const QModelIndex& index) const
{
    return index.isValid() ? rowOf(index) : m_top.get();
}

QModelIndex KelChartPropertyModel::indexOf(const Row& row, int column) const
{
    return createIndex(row.position(), column, const_cast<Row*>(&row));
}

QString KelChartPropertyModel::problem(const QModelIndex& index, const QString& text) const
{
    const Row* row = rowOf(index);
    if (!row)
        return QStringLiteral("there is no property here");
    const KelProperties* node = row->holder.get();
    if (!node)
        return QStringLiteral("the node holding \"%1\" no longer exists").arg(row->name);
    if (!row->hasValue)
        return QStringLiteral("\"%1\" has no value to edit").arg(row->name);
    // Style words first: the store keeps them as free text and would take any word.
    QString reason = KelChartPropertyChoices::check(*node, row->name, text);
    if (reason.isEmpty())
        reason = KelChartPropertyChecks::typeProblem(node->string().valueType(row->name), text);
    if (reason.isEmpty())
        reason = KelChartPropertyChecks::valueProblem(*node, row->name, text);
    return reason;
}

// Writes as the command-line setter does, the holder's setValue with the text
// as given, once the checks above found nothing to object to.
bool KelChartPropertyModel::write(const QModelIndex& index, const QString& text)
{
    const Row* row = rowOf(index);
    QString diagnostic = problem(index, text);
    if (diagnostic.isEmpty())
        diagnostic = row->holder->setValue(row->name, text);
    if (!diagnostic.isEmpty()) {
        refuse(index, diagnostic);
        return false;
    }
    m_lastError.clear();
    // One write can change other texts too (a range changes its components).
    refresh();
    return true;
}

void KelChartPropertyModel::refuse(const QModelIndex& index, const QString& message)
{
    m_lastError = rowOf(index)->path() + QStringLiteral(": ") + message;
    Q_EMIT editRefused(index, m_lastError);
}

void KelChartPropertyModel::sync(Row& row)
{
    std::vector<std::unique_ptr<Row>> wanted = row.currentEntries();
    removeMissing(row, wanted);
    insertMissing(row, wanted);
    for (const auto& child : row.rows) {
        updateTexts(*child);
        if (child->isNode)
            sync(*child);
    }
}

// Removes rows that are gone and rows that now stand out of order, so that
// the rows left are a subsequence of `wanted`.
void KelChartPropertyModel::removeMissing(Row& row, const std::vector<std::unique_ptr<Row>>& wanted)
{
    std::vector<bool> drop(row.rows.size(), true);
    std::size_t next = 0;
    for (std::size_t i = 0; i < row.rows.size(); ++i) {
        const auto match = std::find_if(wanted.begin() + static_cast<std::ptrdiff_t>(next), wanted.end(),
                                        [&](const std::unique_ptr<Row>& entry) { return entry->sameEntry(*row.rows[i]); });
        if (match == wanted.end())
            continue;
        drop[i] = false;
        next = static_cast<std::size_t>(match - wanted.begin()) + 1;
    }
    const QModelIndex parent = row.parent ? indexOf(row, NameColumn) : QModelIndex();
    for (std::size_t i = row.rows.size(); i-- > 0;) {
        if (!drop[i])
            continue;
        beginRemoveRows(parent, static_cast<int>(i), static_cast<int>(i));
        row.rows.erase(row.rows.begin() + static_cast<std::ptrdiff_t>(i));
        endRemoveRows();
    }
}

void KelChartPropertyModel::insertMissing(Row& row, std::vector<std::unique_ptr<Row>>& wanted)
{
    const QModelIndex parent = row.parent ? indexOf(row, NameColumn) : QModelIndex();
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (i < row.rows.size() && row.rows[i]->sameEntry(*wanted[i]))
            continue;
        wanted[i]->populate();
        beginInsertRows(parent, static_cast<int>(i), static_cast<int>(i));
        row.rows.insert(row.rows.begin() + static_cast<std::ptrdiff_t>(i), std::move(wanted[i]));
        endInsertRows();
    }
}

void KelChartPropertyModel::updateTexts(Row& row)
{
    if (row.readTexts())
        Q_EMIT dataChanged(indexOf(row, NameColumn), indexOf(row, UnitColumn));
}
