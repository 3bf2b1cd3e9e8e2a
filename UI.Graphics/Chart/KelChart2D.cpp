#include "KelChart2D.h"

#include "OrvDebug.h"

const QString KelChart2D::typeString = QStringLiteral("chart.2d");

KelChart2D::KelChart2D(KelModifiedGroup& group)
    : KelChart(group)
    , draw3d(*this, QStringLiteral("draw3d"), false, QString())
    , axisX(group)
    , axisY(group)
    , axisZ(group)
{
    orvdebug::trace scope(kel::debug_logger::debuglogger(), ORV_FUNCTION_SIGNATURE, " @line 25");
    setType(typeString);
    insertAxisPairs(axisX, axisY, axisZ);
}

KelChart2D::KelChart2D(const KelChart2D& other)
    : KelChart(other)
    , draw3d(*this, QStringLiteral("draw3d"), other.draw3d.get(), QString())
    , axisX(group())
    , axisY(group())
    , axisZ(group())
{
    {
        orvdebug::trace scope(kel::debug_logger::debuglogger(), ORV_FUNCTION_SIGNATURE, " @line 47");
        insertAxisPairs(axisX, axisY, axisZ);
    }
    setType(typeString);
}

KelChart2D& KelChart2D::operator=(const KelChart2D& other) = default;

KelChart2D::~KelChart2D()
{
    orvdebug::trace scope(kel::debug_logger::debuglogger(), ORV_FUNCTION_SIGNATURE, " @line 63");
}
