import QtQuick
import Tulvane

// A text in one of the scale's sizes; read aloud as it stands.
Text {
    enum Kind { Body, Caption, Heading, Title, LargeTitle, Figure }

    property int kind: Label.Body
    property bool secondary: false

    font.family: Theme.family
    font.pixelSize: [Theme.bodySize, Theme.captionSize, Theme.headingSize, Theme.titleSize,
        Theme.largeTitleSize, Theme.figureSize][kind]
    font.weight: kind >= Label.Heading ? Font.DemiBold : Font.Normal
    color: secondary ? Theme.secondaryText : Theme.text
    linkColor: Theme.accent
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    // Set and not bound: how many lines there are is found anew with it.
    onLineCountChanged: lineHeight = lineCount > 1 ? 1.2 : 1
    Accessible.role: kind >= Label.Heading && kind < Label.Figure ? Accessible.Heading : Accessible.StaticText
    Accessible.name: text.replace(/\u2060/g, "")
    Accessible.ignored: text === "" || !visible
}
