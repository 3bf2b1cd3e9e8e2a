#pragma once
// An item model over a property tree, for a host's property editor. Each node
// shows its properties first, then its child nodes, as rows with the columns
// name, value and unit. Values are read and written through the text
// interface of the node that holds them, as a command-line setter does; a
// child node has a value too when its parent answers for the child's name
// (a variable's "min" range). Refused text changes nothing: setData gives
// false and the diagnostic goes out through `editRefused` and `lastError`.
// Besides the store's own reading, the model refuses style words outside the
// vocabulary and values the chart would quietly ignore (see
// KelChartPropertyChecks), with reasons in plain words.
//
// The tree tells nobody when it changes, so the model keeps a mirror of it
// and `refresh()` brings the rows in line: it inserts and removes rows with
// the proper signals and reports changed texts through dataChanged. Every
// edit through the model refreshes by itself; a host that changes the tree
// directly calls `refresh()` afterwards. Rows of nodes that died before the
// refresh read as empty and refuse edits, so a stale model never touches
// freed memory.
//
// Custom roles tell a host which editor fits a value cell without knowing
// the chart library (see `Role` and `Kind`).

#include "OrvChartPropertiesExport.h"

#include <QAbstractItemModel>
#include <QString>

#include <memory>

class KelProperties;

class ORV_CHART_PROPERTIES_EXPORT KelChartPropertyModel : public QAbstractItemModel {
    Q_OBJECT
public:
    enum Column { NameColumn, ValueColumn, UnitColumn, ColumnCount };

    enum Role {
        // A `Kind`, as int; on every column of the row.
        KindRole = Qt::UserRole + 1,
        // The words to choose from (QStringList) for Choice and ChoiceList.
        ChoicesRole,
        // The store's value type ("bool", "double", "colorlist", ...), empty for free text.
        ValueTypeRole,
        // The row's path from the root, child names and property name joined by "/".
        PathRole,
    };

    enum Kind {
        NoValue,    // a node without a value of its own
        Text,       // free text, or a list in the store's list syntax
        Bool,       // also answers Qt::CheckStateRole
        Colour,     // "#rrggbb" or "#aarrggbb"; also answers Qt::DecorationRole with the QColor
        Integer,
        Number,
        Choice,     // one word of ChoicesRole
        ChoiceList, // a list of words of ChoicesRole
    };
    Q_ENUM(Kind)

    explicit KelChartPropertyModel(QObject* parent = nullptr);
    // The tree must outlive the model or be replaced with `setRoot` first.
    explicit KelChartPropertyModel(KelProperties* root, QObject* parent = nullptr);
    ~KelChartPropertyModel() override;

    KelProperties* root() const;
    void setRoot(KelProperties* root);
    // Brings rows and texts in line with the tree after changes made outside the model.
    void refresh();

    // The node that holds the row's value (for a child node: its parent) and the
    // name it is written under; null for an invalid index or a node that died.
    KelProperties* holder(const QModelIndex& index) const;
    QString propertyName(const QModelIndex& index) const;
    // The node a node row shows; null for property rows.
    KelProperties* node(const QModelIndex& index) const;
    QString lastError() const;
    // Why setData would refuse `text` for the row, empty when it would take it;
    // writes nothing, so an editor can tell the user while they type.
    QString problem(const QModelIndex& index, const QString& text) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    // An edit was refused; `message` says why.
    void editRefused(const QModelIndex& index, const QString& message);

private:
    struct Row;

    Row* rowOf(const QModelIndex& index) const;
    Row* rowOrTop(const QModelIndex& index) const;
    QModelIndex indexOf(const Row& row, int column) const;
    QVariant valueData(const Row& row, int role) const;
    bool write(const QModelIndex& index, const QString& text);
    void refuse(const QModelIndex& index, const QString& message);
    void sync(Row& row);
    void removeMissing(Row& row, const std::vector<std::unique_ptr<Row>>& wanted);
    void insertMissing(Row& row, std::vector<std::unique_ptr<Row>>& wanted);
    void updateTexts(Row& row);

    std::unique_ptr<Row> m_top;
    QString m_lastError;
};
