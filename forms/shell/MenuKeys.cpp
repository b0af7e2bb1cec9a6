#include "forms/shell/MenuKeys.h"

#include "commands/AccessKeys.h"
#include "forms/shell/Binding.h"

#include <QMenu>

namespace Quillon {

namespace {

void PartKeys(const QMenu& menu) {
    QList<QAction*> items;
    std::vector<std::string> captions;
    for (QAction* action : menu.actions())
        if (!action->isSeparator() && action->isVisible()) {
            items << action;
            captions.push_back(RecordText(action->text()));
        }
    const std::vector<std::string> apart = WithOwnAccessKeys(captions);
    for (std::size_t i = 0; i < apart.size(); ++i)
        if (apart[i] != captions[i]) items[static_cast<qsizetype>(i)]->setText(ShownText(apart[i]));
}

} // namespace

void KeepAccessKeysApart(QMenu* menu) {
    PartKeys(*menu);
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu] { PartKeys(*menu); });
}

} // namespace Quillon
