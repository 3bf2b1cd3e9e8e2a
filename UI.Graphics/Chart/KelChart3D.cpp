#include "KelChart3D.h"

#include "OrvDebug.h"

const QString KelChart3D::typeString = QStringLiteral("chart.3d");

KelChart3D::KelChart3D(KelModifiedGroup& group)
    : KelChart(group)
    , cube(*this, QStringLiteral("cube"), true, QString())
    , axisX(group)
    , axisY(group)
    , axisZ(group)
{
    orvdebug::trace scope(kel::debug_logger::debuglogger(), ORV_FUNCTION_SIGNATURE, " @line 30");
    setType(typeString);
    insertAxisPairs(axisX, axisY, axisZ);
}

KelChart3D::KelChart3D(const KelChart3D& other)
    : KelChart(other)
    , cube(*this, QStringLiteral("cube"), other.cube.get(), QString())
    , axisX(group())
    , axisY(group())
    , axisZ(group())
{
    {
        orvdebug::trace scope(kel::debug_logger::debuglogger(), ORV_FUNCTION_SIGNATURE, " @line 52");
        insertAxisPairs(axisX, axisY, axisZ);
    }
    setType(typeString);
}

KelChart3D& KelChart3D::operator=(const KelChart3D& other) = default;

KelChart3D::~KelChart3D()
{
    orvdebug::trace scope(kel::debug_logger::debuglogger(), ORV_FUNCTION_SIGNATURE, " @line 68");
}
