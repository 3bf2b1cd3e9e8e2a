// The file dialog of Qt 6's QtQuick.Dialogs, telling the file chosen.
import QtQuick
import QtQuick.Dialogs

FileDialog {
    signal chosen(url file)
    title: "Open a data or chart file"
    nameFilters: ["Data files (*.csv *.tsv *.txt)", "Chart files (*.json)", "All files (*)"]
    onAccepted: chosen(selectedFile)
}
