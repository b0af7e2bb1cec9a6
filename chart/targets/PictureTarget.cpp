#include "chart/targets/PictureTarget.h"

#include "chart/records/ChartSeams.h"
#include "chart/targets/Metafile.h"
#include "chart/targets/SvgFile.h"
#include "platform/Platform.h"

#include <utility>

namespace Quillon {

namespace {

bool EndsWithSvg(std::string name) {
    for (char& letter : name)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return name.ends_with(".svg");
}

} // namespace

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
    return TargetOf(EndsWithSvg(request.FileName) ? OpenSvg(picture) : OpenMetafile(picture),
                    request.FileName);
}

} // namespace Quillon
