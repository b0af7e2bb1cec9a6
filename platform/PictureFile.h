#pragma once
// A picture that becomes the bytes of a file: a drawing surface that is painted once and then finished.
//
// Makers: enhanced metafile (chart/Metafile.h) and SVG (chart/SvgFile.h), which need no toolkit; PNG and PDF
// (forms/surfaces). All build the file in memory. Whoever asked for the picture writes the bytes, as a whole,
// so that a file is complete or absent.

#include "platform/Surface.h"

#include <functional>
#include <string>

namespace Quillon {

// What a maker of pictures is asked for.
struct PictureRequest {
    std::string Description;                         // what the picture is, for formats that keep it
    int Width{}, Height{};                           // size in device units, at least 1
    double DotsPerInchX = 96.0, DotsPerInchY = 96.0; // device units per inch of the picture
};

// A picture in the making. Its functions share what they draw on; a copy is the same picture.
struct PictureFile {
    // The surface is Width by Height units at the resolution asked for. It is valid until Finish.
    DrawingSurface Surface;

    // Narrows the picture to a part of the surface: the file's size is that of the part, and nothing outside
    // it is seen. Before anything is drawn. A picture without this call is the whole surface.
    std::function<void(const DeviceRect&)> SetWindow;

    // Ends the picture and gives the bytes of its file; only once. A failure is a RuntimeError.
    std::function<std::string()> Finish;

    // Ends the page in hand and begins another one of the same size. Only a PDF has pages; elsewhere it is
    // empty.
    std::function<void()> NewPage = {};
};

// The width of the thinnest line in a file, in device units: one unit, but not less than is seen on paper.
inline double ThinnestPen(const PictureRequest& request) {
    constexpr double points = 0.2, pointsPerInch = 72.0;
    const double width = points * request.DotsPerInchY / pointsPerInch;
    return width > 1.0 ? width : 1.0;
}

// The module that makes pictures with the toolkit's help. A program that does not link the toolkit loads it
// when such a picture is asked for, and finds these two functions in it by name.
namespace PictureModule {

// Must give Version, so that a module from another build is not used.
inline constexpr const char* VersionEntry = "QuillonPictureVersion";
inline constexpr const char* Version = "3";
using VersionFunction = const char*();

// Begins a picture of a kind, "png" or "pdf"; false when the kind is unknown. Needs no display. Nothing is
// thrown out of the module, which may have a runtime library of its own: what fails here, in SetWindow,
// NewPage or Finish is written to failure, which has to live as long as file; Finish then gives no bytes.
inline constexpr const char* OpenEntry = "QuillonOpenPicture";
using OpenFunction = bool(const char* kind, const PictureRequest& request, PictureFile& file,
                          std::string& failure);

} // namespace PictureModule

// The size entries of a picture's surface: those of the request, and colours.
inline void FillSizes(DrawingSurface& surface, const PictureRequest& request) {
    surface.Width = [width = request.Width] { return width; };
    surface.Height = [height = request.Height] { return height; };
    surface.DotsPerInchX = [dots = request.DotsPerInchX] { return dots; };
    surface.DotsPerInchY = [dots = request.DotsPerInchY] { return dots; };
    surface.HasColor = [] { return true; };
}

} // namespace Quillon
