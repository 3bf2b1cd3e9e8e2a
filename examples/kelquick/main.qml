// A window with the chart, a toolbar to open a file, go Home, fit y, edit the
// title and the x axis's range, and a line with the read-out under the cursor.
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import Orv.Chart 1.0

ApplicationWindow {
    id: window
    width: 1000
    height: 680
    title: "kelquick - " + (chart.title.length > 0 ? chart.title : "chart")

    // Few digits, as a field has room for; empty where the axis has no number range.
    function shown(value) {
        return isNaN(value) ? "" : Number(value.toPrecision(6)).toString()
    }

    header: ToolBar {
        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 6
            anchors.rightMargin: 6
            ToolButton { text: "Open CSV..."; onClicked: openDialog.open() }
            ToolButton { text: "Home"; onClicked: chart.home() }
            ToolButton { text: "Fit y"; onClicked: chart.fitY() }
            Label { text: "Title" }
            TextField {
                objectName: "titleField"
                Layout.fillWidth: true
                Layout.minimumWidth: 160
                text: chart.title
                onEditingFinished: chart.title = text
            }
            Label { text: "x from" }
            TextField {
                objectName: "xMinField"
                Layout.preferredWidth: 90
                enabled: chart.xAxis.kind !== "discrete"
                text: window.shown(chart.xAxis.min)
                validator: DoubleValidator { locale: "C" }
                onEditingFinished: chart.xAxis.min = Number(text)
            }
            Label { text: "to" }
            TextField {
                objectName: "xMaxField"
                Layout.preferredWidth: 90
                enabled: chart.xAxis.kind !== "discrete"
                text: window.shown(chart.xAxis.max)
                validator: DoubleValidator { locale: "C" }
                onEditingFinished: chart.xAxis.max = Number(text)
            }
        }
    }

    Chart {
        id: chart
        objectName: "chart"
        anchors.fill: parent
        focus: true
        source: initialSource
    }

    footer: Label {
        objectName: "readOut"
        padding: 6
        elide: Text.ElideRight
        background: Rectangle { color: "#f4f4f4"; border.color: "#d0d0d0" }
        color: chart.errorString.length > 0 ? "darkred" : palette.windowText
        text: chart.errorString.length > 0 ? chart.errorString
            : chart.readOut.length > 0 ? chart.readOut
            : "Wheel: zoom - drag: pan - right drag: zoom to a box - double click: Home - legend: hide a series"
    }

    OpenDialog {
        id: openDialog
        onChosen: chart.source = file
    }
}
