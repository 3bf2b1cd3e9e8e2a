#include "ChartFile.h"

#include "ElementClasses.h"
#include "Fault_p.h"
#include "Files_p.h"

#include "KelChartAxisKinds.h"
#include "KelChartAxisPair.h"
#include "KelChart.h"
#include "KelChartLegend.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <set>

namespace Orv::Chart {

namespace {

const QString formatKey = QStringLiteral("format");
const QString formatName = QStringLiteral("kelchart chart");
const QString versionKey = QStringLiteral("version");
constexpr int version = 1;
const QString rootKey = QStringLiteral("root");

QJsonObject nodeToJson(const KelProperties& node)
{
    const KelPropertiesString& store = node.string();
    QJsonArray properties;
    for (const QString& name : store.names())
        properties.append(QJsonObject{{QStringLiteral("name"), name},
                                      {QStringLiteral("value"), store.getString(name)},
                                      {QStringLiteral("unit"), store.getUnit(name, QString())}});
    QJsonArray children;
    for (unsigned i = 0; i < node.size(); ++i)
        children.append(nodeToJson(*node[i]));
    return {{QStringLiteral("type"), node.type()},
            {QStringLiteral("name"), node.name()},
            {QStringLiteral("properties"), properties},
            {QStringLiteral("children"), children}};
}

// Rebuilds a tree from its JSON form; knows where it is for its messages.
class Loader {
public:
    Loader(const QString& source, KelModifiedGroup& group)
        : m_source(source)
        , m_group(group)
    {
    }

    std::unique_ptr<KelProperties> root(const QJsonValue& value);

private:
    // An empty path stands for the root before its name is known.
    [[noreturn]] void fail(const QString& path, const QString& message) const
    {
        const QString node = path.isEmpty() ? QStringLiteral("root") : QStringLiteral("node \"%1\"").arg(path);
        Orv::Chart::fail(QStringLiteral("%1: %2: %3").arg(m_source, node, message));
    }

    QJsonObject object(const QJsonValue& value, const QString& path, const QString& what) const;
    QJsonArray array(const QJsonObject& object, const QString& key, const QString& path) const;
    QString text(const QJsonObject& object, const QString& key, const QString& path) const;

    void fill(KelProperties& node, const QJsonObject& json, const QString& path);
    void applyProperty(KelProperties& node, const QJsonValue& value, const QString& path);
    void addChild(KelProperties& parent, const QJsonValue& value, const QString& parentPath);
    KelProperties& makeChild(KelProperties& parent, const QString& name, const QString& type, const QString& path);
    KelProperties& makeAxis(KelChartAxisPair& pair, const QString& name, const QString& type, const QString& path);

    QString m_source;
    KelModifiedGroup& m_group;
    std::set<const KelProperties*> m_filled;
};

QJsonObject Loader::object(const QJsonValue& value, const QString& path, const QString& what) const
{
    if (!value.isObject())
        fail(path, QStringLiteral("%1 is not a JSON object").arg(what));
    return value.toObject();
}

QJsonArray Loader::array(const QJsonObject& object, const QString& key, const QString& path) const
{
    const QJsonValue value = object.value(key);
    if (!value.isArray())
        fail(path, QStringLiteral("\"%1\" is missing or not an array").arg(key));
    return value.toArray();
}

QString Loader::text(const QJsonObject& object, const QString& key, const QString& path) const
{
    const QJsonValue value = object.value(key);
    if (!value.isString())
        fail(path, QStringLiteral("\"%1\" is missing or not a string").arg(key));
    return value.toString();
}

std::unique_ptr<KelProperties> Loader::root(const QJsonValue& value)
{
    const QString where;
    const QJsonObject json = object(value, where, QStringLiteral("the root"));
    const QString type = text(json, QStringLiteral("type"), where);
    std::unique_ptr<KelProperties> node = ElementClasses::make(type, m_group);
    if (!node)
        fail(where, QStringLiteral("unknown type string \"%1\"").arg(type));
    const QString name = text(json, QStringLiteral("name"), where);
    node->rename(name);
    fill(*node, json, name);
    return node;
}

void Loader::fill(KelProperties& node, const QJsonObject& json, const QString& path)
{
    if (!m_filled.insert(&node).second)
        fail(path, QStringLiteral("a sibling of the same name came before"));
    for (const auto& property : array(json, QStringLiteral("properties"), path))
        applyProperty(node, property, path);
    for (const auto& child : array(json, QStringLiteral("children"), path))
        addChild(node, child, path);
}

void Loader::applyProperty(KelProperties& node, const QJsonValue& value, const QString& path)
{
    const QJsonObject json = object(value, path, QStringLiteral("a property"));
    const QString name = text(json, QStringLiteral("name"), path);
    const QString diagnostic = node.string().setValue(name, text(json, QStringLiteral("value"), path));
    if (!diagnostic.isEmpty())
        fail(path, QStringLiteral("property \"%1\": %2").arg(name, diagnostic));
    node.string().setUnit(name, text(json, QStringLiteral("unit"), path));
}

void Loader::addChild(KelProperties& parent, const QJsonValue& value, const QString& parentPath)
{
    const QJsonObject json = object(value, parentPath, QStringLiteral("a child"));
    const QString name = text(json, QStringLiteral("name"), parentPath);
    const QString path = parentPath + QLatin1Char('/') + name;
    const QString type = text(json, QStringLiteral("type"), path);
    if (!ElementClasses::known(type))
        fail(path, QStringLiteral("unknown type string \"%1\"").arg(type));
    KelProperties& child = makeChild(parent, name, type, path);
    if (child.type() != type)
        fail(path, QStringLiteral("the file says \"%1\", but the parent holds or makes a \"%2\" of this name")
                       .arg(type, child.type()));
    if (!ElementClasses::isInstance(child))
        fail(path, QStringLiteral("the parent cannot make a \"%1\"").arg(type));
    fill(child, json, path);
}

KelProperties& Loader::makeChild(KelProperties& parent, const QString& name, const QString& type,
                                 const QString& path)
{
    auto* pair = dynamic_cast<KelChartAxisPair*>(&parent);
    if (pair && !parent[name])
        return makeAxis(*pair, name, type, path);
    // A chart makes plain nodes of its children; its legend is the host's to make.
    if (dynamic_cast<KelChart*>(&parent) && type == KelChartLegend::typeString && !parent[name]) {
        KelProperties* legend = ElementClasses::make(type, m_group).release();
        legend->rename(name);
        parent.insert(legend, false);
        return *legend;
    }
    return parent.child(name, type);
}

// The pair's axes are named "<pair name>.<name>"; the first one in the file
// becomes the first axis, the next one the second. `createFirst` enables the
// axis; the file's own "enabled" is applied afterwards.
KelProperties& Loader::makeAxis(KelChartAxisPair& pair, const QString& name, const QString& type,
                                const QString& path)
{
    const QString prefix = pair.name() + QLatin1Char('.');
    if (!KelChartAxisKinds::isRangedType(type))
        fail(path, QStringLiteral("an axis pair holds continuous, discrete and time axes only, not \"%1\"").arg(type));
    if (!name.startsWith(prefix) || name.size() == prefix.size())
        fail(path, QStringLiteral("an axis of the pair \"%1\" must be named \"%2<name>\"").arg(pair.name(), prefix));
    if (pair.first() && pair.second())
        fail(path, QStringLiteral("an axis pair holds at most two axes"));
    const QString shortName = name.mid(prefix.size());
    return pair.first() ? pair.createSecond(shortName, type) : pair.createFirst(shortName, type);
}

int lineOf(const QByteArray& data, int offset)
{
    return static_cast<int>(data.left(offset).count('\n')) + 1;
}

} // namespace

QByteArray ChartFile::toJson(const KelProperties& root)
{
    const QJsonObject file{{formatKey, formatName}, {versionKey, version}, {rootKey, nodeToJson(root)}};
    return QJsonDocument(file).toJson(QJsonDocument::Indented);
}

namespace {

std::unique_ptr<KelProperties> rootOf(const QByteArray& json, const QString& source, KelModifiedGroup& group)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        fail(QStringLiteral("%1:%2: malformed chart file: %3")
                          .arg(source)
                          .arg(lineOf(json, error.offset))
                          .arg(error.errorString()));
    const QJsonObject file = document.object();
    if (!document.isObject() || file.value(formatKey).toString() != formatName)
        fail(QStringLiteral("%1: not a kelchart chart file (no \"%2\": \"%3\")").arg(source, formatKey, formatName));
    if (file.value(versionKey).toInt(-1) != version)
        fail(QStringLiteral("%1: chart file version %2 is not supported, expected %3")
                          .arg(source, file.value(versionKey).toVariant().toString())
                          .arg(version));
    return Loader(source, group).root(file.value(rootKey));
}

} // namespace

std::unique_ptr<KelProperties> ChartFile::fromJson(const QByteArray& json, const QString& source,
                                                   KelModifiedGroup& group, IoError* error)
{
    return guarded([&] { return rootOf(json, source, group); }, error, nullptr);
}

bool ChartFile::save(const KelProperties& root, const QString& path, IoError* error)
{
    return guarded(
        [&] {
            writeFile(path, toJson(root));
            return true;
        },
        error, false);
}

std::unique_ptr<KelProperties> ChartFile::load(const QString& path, KelModifiedGroup& group, IoError* error)
{
    return guarded([&] { return rootOf(readFile(path), path, group); }, error, nullptr);
}

} // namespace Orv::Chart
