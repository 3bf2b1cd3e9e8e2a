#include "KelChartVariableStyle.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

const std::string defaultDump =
    "\tstyle             : none\n"
    "\tline               : solid\n"
    "\tlineColor          : #000000\n"
    "\tlineBackgroundColor: #00000000\n"
    "\tlineGradient       : #0000ff, #00ffff, #00ff00, #ffff00, #ff0000\n"
    "\tlineWidth          : 1\n"
    "\tlineSmooth         : true\n"
    "\tfill               : none\n"
    "\tfillColor          : #000000\n"
    "\tfillBackgroundColor: #00000000\n"
    "\tfillGradient       : #0000ff, #00ffff, #00ff00, #ffff00, #ff0000\n"
    "\tlabelColor         : #000000\n"
    "\tlabelShadowColor   : #00000000\n"
    "\tbarWidth           : 1\n"
    "\tbarOffset          : 0\n"
    "\tbarTopSize         : 0\n"
    "\tbarTopColor        : #000000\n"
    "\tsymbol             : none\n"
    "\tsymbolSize         : 7\n"
    "\tsymbolOutline      : true\n"
    "\tsymbolOutlineColor : #000000\n"
    "\tsymbolFill         : solid\n"
    "\tsymbolFillColor    : #000000\n";

std::string dump(const KelChartVariableStyle& style)
{
    std::ostringstream os;
    os << style;
    return os.str();
}

} // namespace

// The drawing properties' defaults, in the dump's fixed layout.
TEST(KelChartVariableStyle, DumpShowsTheStoredTextsOfTheDrawingProperties)
{
    KelModifiedGroup group;
    KelChartVariableStyle style(group);
    EXPECT_EQ(dump(style), defaultDump);
    style.setValue(QStringLiteral("symbolFillColor"), QStringLiteral("#ff0000, #00ff00"));
    const std::string changed = dump(style);
    EXPECT_EQ(changed.substr(changed.rfind("\t")), "\tsymbolFillColor    : #ff0000, #00ff00\n");
}
