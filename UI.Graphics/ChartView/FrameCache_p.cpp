#include "FrameCache_p.h"

#include "KelChart.h"
#include "KelChart2D.h"
#include "KelChart3D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"
#include "KelChartLegend.h"
#include "KelChartVariable.h"

#include <QHash>
#include <QPainter>
#include <QSet>

#include <cstdint>
#include <cstring>
#include <vector>

namespace Orv::Chart {

const QImage& KeptFrame::image(QSize size, qreal ratio, const Draw& draw)
{
    const QSize pixels = (QSizeF(size) * ratio).toSize();
    if (m_current && m_image.size() == pixels && m_image.devicePixelRatio() == ratio)
        return m_image;
    if (m_image.size() != pixels)
        m_image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    m_image.setDevicePixelRatio(ratio);
    m_image.fill(Qt::white);
    QPainter painter(&m_image);
    draw(painter);
    m_current = true;
    return m_image;
}

namespace {

using Names = QSet<QString>;

Names names(std::initializer_list<const char*> list)
{
    Names set;
    for (const char* name : list)
        set.insert(QLatin1String(name));
    return set;
}

// The properties, by node type, that the caches and the unit update never
// read: the scales, the layout and the painter read them again for every
// frame. Whatever is not listed (data, units, "enabled", the axis bindings,
// "order", "logarithmic", time zones...) renews the caches.
const QHash<QString, Names>& lookOnly()
{
    static const QHash<QString, Names> table = [] {
        const Names chart = names({"title", "textColor", "textShadowColor"});
        const Names axis = names({"title", "inverted", "tickColor", "gridColor", "labelColor", "labelShadowColor"});
        const Names continuous = axis + names({"autoScale", "min", "max", "symmetric", "tightRange"});
        const Names discrete = axis + names({"autoScale", "min", "max", "labelOffset", "viewMin", "viewMax"});
        return QHash<QString, Names>{
            {KelChart::typeString, chart},
            {KelChart2D::typeString, chart},
            {KelChart3D::typeString, chart},
            {KelChartVariable::typeString, names({"title", "legend", "label"})},
            {KelChartAxis::typeString, axis},
            {KelChartAxisContinuous::typeString, continuous},
            {KelChartAxisTime::typeString, continuous + names({"labelFormat"})},
            {KelChartAxisDiscrete::typeString, discrete},
        };
    }();
    return table;
}

bool onlyLooks(const QString& type, const QString& name)
{
    // A style is read by the painter alone, but for the sorting of the points.
    if (type == KelChartVariableStyle::typeString)
        return name != QLatin1String("componentSortAxis");
    const auto found = lookOnly().find(type);
    return found != lookOnly().end() && found->contains(name);
}

// Mixes whole words of `bytes` into `hash`; the tail goes in zero-padded.
std::uint64_t mixed(std::uint64_t hash, const void* bytes, std::size_t count)
{
    const auto* at = static_cast<const unsigned char*>(bytes);
    const auto mix = [&hash](std::uint64_t word) { hash = (hash ^ word) * 0x9e3779b97f4a7c15ULL; };
    for (; count >= sizeof(std::uint64_t); count -= sizeof(std::uint64_t), at += sizeof(std::uint64_t)) {
        std::uint64_t word;
        std::memcpy(&word, at, sizeof word);
        mix(word);
    }
    std::uint64_t tail = 0;
    std::memcpy(&tail, at, count);
    mix(tail ^ count);
    return hash;
}

std::uint64_t mixed(std::uint64_t hash, const std::vector<bool>* flags)
{
    const std::uint64_t flagsHash = flags ? std::hash<std::vector<bool>>()(*flags) : 0;
    return mixed(hash, &flagsHash, sizeof flagsHash);
}

// The items as the caches read them: a change of data, even to as many
// items in the same units, shows in the hash.
QString itemsOf(KelVariableIter& iter)
{
    using Comp = Orv::Math::Vector3::Comp;
    const KelVariableIter::Delivered items = iter.delivered();
    std::uint64_t hash = 0xcbf29ce484222325ULL;
    if (items.scalars)
        hash = mixed(hash, items.scalars, items.size * sizeof(double));
    if (items.x && items.y) {
        hash = mixed(hash, items.x, items.size * sizeof(float));
        hash = mixed(hash, items.y, items.size * sizeof(float));
    }
    hash = mixed(mixed(hash, items.xUndefined), items.yUndefined);
    return QStringLiteral("items %1 %2 %3 %4 %5")
        .arg(iter.dimension())
        .arg(items.size)
        .arg(iter.nativeUnit(Comp::X), iter.nativeUnit(Comp::Y))
        .arg(hash, 16, 16, QLatin1Char('0'));
}

// One entry per node (its path names its place and type) and per property
// that may change the caches; a legend and all it holds only change the look.
void record(KelProperties& node, const QString& parentPath, bool inLegend, QStringList& entries)
{
    const QString path = parentPath + QLatin1Char('/') + node.name() + QLatin1Char(':') + node.type();
    entries << path;
    const bool legend = inLegend || node.type() == KelChartLegend::typeString;
    const KelPropertiesString& store = node.string();
    if (!legend)
        for (const QString& name : store.names())
            if (!onlyLooks(node.type(), name))
                entries << path + QLatin1Char('/') + name + QLatin1Char('=') + store.getString(name) + QLatin1Char(' ')
                               + store.getUnit(name, QString());
    if (auto* iter = dynamic_cast<KelVariableIter*>(&node))
        entries << path + QLatin1Char('/') + itemsOf(*iter);
    for (unsigned i = 0; i < node.size(); ++i)
        record(*node[i], path, legend, entries);
}

} // namespace

CacheInputs::CacheInputs(KelChart& chart)
{
    record(chart, QString(), false, m_entries);
}

} // namespace Orv::Chart
