#pragma once
// The fixed texts of the library's traces on the debug logger's `dlog` stream:
// the signatures and place texts of the scoped traces that chart kinds and
// axis pairs open, and the lines a variable cache writes while it caches.

// The scoped traces of one chart kind's special members: each signature as
// the kind's own class shows it, followed by its place text.
struct KelChartKindTraces {
    const char* constructor;
    const char* constructorWhere;
    const char* copyConstructor;
    const char* copyConstructorWhere;
    const char* destructor;
    const char* destructorWhere;
};

namespace KelChartTraceTexts {

inline constexpr KelChartKindTraces chart2D = {
    "KelChart2D::KelChart2D(KelModifiedGroup&)", " @line 25",
    "KelChart2D::KelChart2D(const KelChart2D&)", " @line 47",
    "virtual KelChart2D::~KelChart2D()",         " @line 63"};
inline constexpr KelChartKindTraces chart3D = {
    "KelChart3D::KelChart3D(KelModifiedGroup&)", " @line 30",
    "KelChart3D::KelChart3D(const KelChart3D&)", " @line 52",
    "virtual KelChart3D::~KelChart3D()",         " @line 68"};
inline constexpr char axisPairMakeChild[] = " @line 78";

// Variable cache lines, each followed by its value where it has one.
inline constexpr char caching[] = "caching : ";
inline constexpr char enabled[] = "\tenabled";
inline constexpr char vector2[] = "\tvector 2";
inline constexpr char scalar[] = "\tscalar";
inline constexpr char size[] = "\tsize : ";
inline constexpr char valid[] = "\tvalid = ";

} // namespace KelChartTraceTexts
