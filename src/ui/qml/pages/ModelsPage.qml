import QtQuick
import Tulvane

ScrollPage {
    required property UiModels models

    title: models.main.entries.find(entry => entry.page === "models").title
}
