#include "PropertyPath.h"

#include "Failure.h"

#include <QStringList>

namespace kelchart {

namespace {

[[noreturn]] void fail(const QString& path, const QString& message)
{
    throw Failure(QStringLiteral("--set %1: %2").arg(path, message));
}

// Whether the node answers the name through its text interface: stored
// properties, and names a class routes elsewhere (a variable's ranges).
bool hasProperty(const KelProperties& node, const QString& name)
{
    QString value;
    return node.getValue(name, value, QString()).isEmpty();
}

} // namespace

PropertyPath::Target PropertyPath::resolve(KelProperties& root, const QString& path)
{
    const QStringList parts = path.split(QLatin1Char('/'));
    KelProperties* node = &root;
    for (int i = 0; i + 1 < parts.size(); ++i) {
        KelProperties* child = (*node)[parts[i]];
        if (!child) {
            const QString parent = i == 0 ? QStringLiteral("the chart")
                                          : QLatin1Char('"') + parts.mid(0, i).join(QLatin1Char('/')) + QLatin1Char('"');
            fail(path, QStringLiteral("%1 has no child \"%2\"").arg(parent, parts[i]));
        }
        node = child;
    }
    const QString& property = parts.back();
    if (property.isEmpty() || !hasProperty(*node, property))
        fail(path, QStringLiteral("%1 \"%2\" has no property \"%3\"").arg(node->type(), node->name(), property));
    return {node, property};
}

void PropertyPath::set(KelProperties& root, const QString& path, const QString& value)
{
    const Target target = resolve(root, path);
    const QString diagnostic = target.node->setValue(target.property, value);
    if (!diagnostic.isEmpty())
        fail(path, diagnostic);
}

void PropertyPath::assign(KelProperties& root, const QString& assignment)
{
    const int equals = assignment.indexOf(QLatin1Char('='));
    if (equals <= 0)
        throw Failure(QStringLiteral("--set %1: expected PATH=VALUE").arg(assignment), Failure::BadUsage);
    set(root, assignment.left(equals), assignment.mid(equals + 1));
}

} // namespace kelchart
