// The file dialog of Qt 5's QtQuick.Dialogs, telling the file chosen.
import QtQuick 2.15
import QtQuick.Dialogs 1.3

FileDialog {
    signal chosen(url file)
    title: "Open a data or chart file"
    nameFilters: ["Data files (*.csv *.tsv *.txt)", "Chart files (*.json)", "All files (*)"]
    onAccepted: chosen(fileUrl)
}
