#pragma once
// The command line of the interactive view:
//   kelview [options] [chart.json] [data.csv]
// A file ending in ".csv", ".tsv" or ".txt" is the data; any other is a chart
// file. Without a chart file a data file gets a chart set up for it; without
// either the view opens on the built-in sample.

#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>

namespace kelview {

struct ViewOptions {
    QString chartPath;
    QString csvPath;
    QSize size{1100, 640};
    bool editor = true;
    // The chart's locale by QLocale's name ("C", "de_DE"); empty: the one chosen last time.
    QString locale;
    // Grab the window into this PNG file and quit, without showing it on screen.
    QString screenshotPath;
    // Where a screenshot puts the cursor, to show the hover; none when negative.
    QPoint hover{-1, -1};

    // Usage faults throw a kelchart::Failure with BadUsage.
    static ViewOptions parse(const QStringList& arguments);
};

} // namespace kelview
