#pragma once
// Picture files as what the chart engine paints a metafile on.

#include "chart/records/ChartSeams.h"
#include "platform/PictureFile.h"

#include <string>

namespace Quillon {

// The picture that a request of the engine asks for.
PictureRequest PictureOf(const MetafileRequest& request);

// A picture as a target: when it is closed its bytes are written whole under that name. A failure to write is
// the RuntimeError of Host.WriteFile; closed again, it does nothing.
MetafileTarget TargetOf(const PictureFile& picture, const std::string& fileName);

// The engine's maker of metafiles: an enhanced metafile, or scalable vector graphics where the file's name
// ends with ".svg".
MetafileTarget MakeMetafile(const MetafileRequest& request);

} // namespace Quillon
