#pragma once
// Menus in which no two items share an access key: pressed, a shared one chooses neither.

class QMenu;

namespace Quillon {

// Gives the items of a menu that stand in an earlier one's way another key (WithOwnAccessKeys), now and
// whenever the menu is about to show, since captions may have changed by then.
void KeepAccessKeysApart(QMenu* menu);

} // namespace Quillon
