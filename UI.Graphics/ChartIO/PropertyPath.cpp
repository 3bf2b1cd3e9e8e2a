#include "PropertyPath.h"

#include "Fault_p.h"

#include <QStringList>

namespace Orv::Chart {

namespace {

[[noreturn]] void failAt(const QString& path, const QString& message)
{
    fail(QStringLiteral("%1: %2").arg(path, message));
}

// Whether the node answers the name through its text interface: stored
// properties, and names a class routes elsewhere (a variable's ranges).
bool hasProperty(const KelProperties& node, const QString& name)
{
    QString value;
    return node.getValue(name, value, QString()).isEmpty();
}

using PropertyPath::Target;

Target resolveOrFail(KelProperties& root, const QString& path)
{
    const QStringList parts = path.split(QLatin1Char('/'));
    KelProperties* node = &root;
    for (int i = 0; i + 1 < parts.size(); ++i) {
        KelProperties* child = (*node)[parts[i]];
        if (!child) {
            const QString parent = i == 0 ? QStringLiteral("the chart")
                                          : QLatin1Char('"') + parts.mid(0, i).join(QLatin1Char('/')) + QLatin1Char('"');
            failAt(path, QStringLiteral("%1 has no child \"%2\"").arg(parent, parts[i]));
        }
        node = child;
    }
    const QString& property = parts.back();
    if (property.isEmpty() || !hasProperty(*node, property))
        failAt(path, QStringLiteral("%1 \"%2\" has no property \"%3\"").arg(node->type(), node->name(), property));
    return {node, property};
}

bool setOrFail(KelProperties& root, const QString& path, const QString& value)
{
    const Target target = resolveOrFail(root, path);
    const QString diagnostic = target.node->setValue(target.property, value);
    if (!diagnostic.isEmpty())
        failAt(path, diagnostic);
    return true;
}

} // namespace

Target PropertyPath::resolve(KelProperties& root, const QString& path, IoError* error)
{
    return guarded([&] { return resolveOrFail(root, path); }, error, Target());
}

bool PropertyPath::set(KelProperties& root, const QString& path, const QString& value, IoError* error)
{
    return guarded([&] { return setOrFail(root, path, value); }, error, false);
}

bool PropertyPath::assign(KelProperties& root, const QString& assignment, IoError* error)
{
    const int equals = assignment.indexOf(QLatin1Char('='));
    if (equals <= 0) {
        if (error)
            *error = {IoError::BadRequest, QStringLiteral("%1: expected PATH=VALUE").arg(assignment)};
        return false;
    }
    return set(root, assignment.left(equals), assignment.mid(equals + 1), error);
}

} // namespace Orv::Chart
