#include "KelViewport.h"

#include <Qt>

namespace {
constexpr int defaultAlignment = Qt::AlignLeft | Qt::AlignTop;
}

// Members write their defaults only into a store that lacks them, so a copy's
// members just attach to the values copied with the base.
KelViewport::KelViewport(KelModifiedGroup& group)
    : KelProperties(group)
    , alignment(*this, QStringLiteral("alignment"), defaultAlignment)
    , x(*this, QStringLiteral("x"), 0.0)
    , y(*this, QStringLiteral("y"), 0.0)
    , width(*this, QStringLiteral("width"), 1.0)
    , height(*this, QStringLiteral("height"), 1.0)
{
    setType(QStringLiteral("viewport"));
    rename(QStringLiteral("viewport.1"));
}

KelViewport::KelViewport(const KelViewport& other)
    : KelProperties(other)
    , alignment(*this, QStringLiteral("alignment"), defaultAlignment)
    , x(*this, QStringLiteral("x"), 0.0)
    , y(*this, QStringLiteral("y"), 0.0)
    , width(*this, QStringLiteral("width"), 1.0)
    , height(*this, QStringLiteral("height"), 1.0)
{
}

KelViewport& KelViewport::operator=(const KelViewport& other)
{
    KelProperties::operator=(other);
    return *this;
}

KelViewport::~KelViewport() = default;
