#pragma once
// The command line of the interactive view:
//   kelview [options] [chart.json] [data.csv]
//   kelview [options] --live generator[:RATE] | - | PATH
// A file ending in ".csv", ".tsv" or ".txt" is the data; any other is a chart
// file. Without a chart file a data file gets a chart set up for it; without
// either the view opens on the built-in sample. A live source replaces the
// files: a signal generator, rows of a table on standard input, or a named
// pipe or file that rows are appended to.

#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>

#include <cstddef>

namespace kelview {

// Data that arrive while the window is open.
struct LiveOptions {
    enum class Source { None, Generator, StandardInput, Path };

    Source source = Source::None;
    QString path;
    // Items per second per channel of the generator.
    double rate = 1000.0;
    // Items kept per series; 0 keeps every one.
    std::size_t limit = 1000000;
    // The x axis shows the newest `follow` x units; 0: it stays where it is put.
    double follow = 0.0;

    bool active() const { return source != Source::None; }
};

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
    LiveOptions live;

    // Usage faults throw a kelchart::Failure with BadUsage.
    static ViewOptions parse(const QStringList& arguments);
};

} // namespace kelview
