#include "chart/targets/PictureTarget.h"

#include "chart/records/ChartSeams.h"
#include "chart/targets/Metafile.h"
#include "chart/targets/SvgFile.h"
#include "platform/Letters.h"
#include "platform/Platform.h"

#include <utility>

namespace Quillon {

PictureRequest PictureOf(const MetafileRequest& request) {
    return {request.Description, request.DeviceW, request.DeviceH, request.DotsPerInchX,
            request.DotsPerInchY};
}

MetafileTarget TargetOf(const PictureFile& picture, const std::string& fileName) {
    MetafileTarget target;
    target.Surface = picture.Surface;
    target.SetWindow = picture.SetWindow;
    target.Close = [finish = picture.Finish, fileName]() mutable {
        const auto bytes = std::exchange(finish, nullptr);
        if (bytes) Host.WriteFile(fileName, bytes());
    };
    return target;
}

MetafileTarget MakeMetafile(const MetafileRequest& request) {
    const PictureRequest picture = PictureOf(request);
    return TargetOf(EndsWithLetters(request.FileName, ".svg") ? OpenSvg(picture) : OpenMetafile(picture),
                    request.FileName);
}

} // namespace Quillon
