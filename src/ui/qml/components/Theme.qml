pragma Singleton

import QtQuick
import Tulvane

// Every colour, size, distance and duration that the windows are drawn with. Text colours hold a contrast of
// 4.5 : 1 or more on every surface that they are used on (a test measures them).
QtObject {
    readonly property bool dark: Look.dark

    // Surfaces, from the back to the front.
    readonly property color window: dark ? "#14171c" : "#f5f6f8"
    readonly property color sidebar: dark ? "#1a1e24" : "#eaedf1"
    readonly property color card: dark ? "#1f242b" : "#ffffff"
    readonly property color field: dark ? "#171b20" : "#ffffff"
    readonly property color popup: dark ? "#272d36" : "#ffffff"
    readonly property color hover: dark ? "#2a313a" : "#eef1f4"
    readonly property color pressed: dark ? "#333b46" : "#e2e7ec"
    readonly property color track: dark ? "#39424e" : "#dbe1e8"

    // Lines.
    readonly property color border: dark ? "#2e353f" : "#e0e4ea"
    readonly property color controlBorder: dark ? "#6f7c8c" : "#808a9a"
    readonly property color separator: dark ? "#2a3039" : "#e8ebef"

    // Texts and symbols.
    readonly property color text: dark ? "#eef1f5" : "#161d26"
    readonly property color secondaryText: dark ? "#a8b2bf" : "#566171"
    readonly property color disabledText: dark ? "#8792a0" : "#69737f"

    // The one accent, and what stands on it.
    readonly property color accent: dark ? "#4fc3da" : "#0a6c86"
    readonly property color accentHover: dark ? "#6dd0e4" : "#085a70"
    readonly property color accentPressed: dark ? "#8adbeb" : "#07495b"
    readonly property color accentInk: dark ? "#062630" : "#ffffff"
    readonly property color accentSoft: dark ? "#173843" : "#dcf0f4"
    readonly property color accentSoftInk: dark ? "#8fdff0" : "#0a5a70"

    // A bar of a chart that is not the one in question; 3 : 1 against every surface under it.
    readonly property color bar: dark ? "#3a8495" : "#4d93a6"

    // Meanings.
    readonly property color success: dark ? "#5fd39a" : "#17754a"
    readonly property color successSoft: dark ? "#173a2c" : "#def3e8"
    readonly property color warning: dark ? "#f2bd62" : "#8a5200"
    readonly property color warningSoft: dark ? "#3d3018" : "#fcefd9"
    readonly property color danger: dark ? "#ff938a" : "#b3261e"
    readonly property color dangerSoft: dark ? "#452422" : "#fbe4e2"
    readonly property color dangerInk: dark ? "#3a0b07" : "#ffffff"

    // The indicator lies over whatever other programs show: the same dark glass in both appearances.
    readonly property color indicatorTop: "#f2252b34"
    readonly property color indicatorBottom: "#f2161a20"
    readonly property color indicatorEdge: "#3dffffff"
    readonly property color indicatorShadow: "#70000000"
    readonly property color indicatorText: "#f4f6f9"
    readonly property color indicatorSecondaryText: "#b6c0cc"
    readonly property color indicatorAccent: "#58cfe6"
    readonly property color indicatorDanger: "#ff9a90"

    // One type scale, in device-independent pixels.
    readonly property string family: Look.fontFamily
    readonly property int captionSize: 12
    readonly property int bodySize: 14
    readonly property int headingSize: 15
    readonly property int titleSize: 20
    readonly property int largeTitleSize: 26
    readonly property int figureSize: 28

    // One spacing scale.
    readonly property int tiny: 4
    readonly property int small: 8
    readonly property int medium: 12
    readonly property int large: 16
    readonly property int huge: 24
    readonly property int enormous: 32

    readonly property int controlHeight: 32
    readonly property int controlRadius: 7
    readonly property int cardRadius: 12

    readonly property int beat: Look.animated ? 50 : 0 // the microphone's level comes as often
    readonly property int quick: Look.animated ? 120 : 0
    readonly property int slow: Look.animated ? 220 : 0
}
