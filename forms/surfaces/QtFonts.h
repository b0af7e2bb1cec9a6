#pragma once
// Fonts of a surface as fonts of the toolkit.

#include "platform/Surface.h"

#include <QFont>
#include <QString>

namespace Quillon {

// The installed font that stands for a family, at the height asked for. The family itself is taken where it
// is installed, then those of equal letter widths, then what the system has of the same kind. There is no
// kerning and no letters are joined, so that widths are those of the letters on every surface.
QFont ToolkitFont(const SurfaceFont& font);

// A text as the toolkit draws it in that family: Latin-1, or the signs of the Symbol family as Unicode.
QString ToolkitText(const SurfaceFont& font, const std::string& text);

} // namespace Quillon
