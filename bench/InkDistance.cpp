// How far the ink of one picture lies from that of another one: the dots of the table of docs/pictures.md.
//
//     ink-distance WANTED.ppm READ.ppm     pictures of 8 bits a colour (PPM, P6)
//
// A dot has ink where it is at least half of the way from white to full colour; it lies apart where the other
// picture has next to no ink (an eighth) within one dot of it, to the sides or across. Printed are the dots
// of ink of WANTED, the dots of either picture that lie apart from the other one, and how many dots the
// farthest lies away, 20 standing for all beyond. A READ of another size is the sheet that the picture lies
// on, within three dots of its upper left corner: where a picture lies on a sheet is no part of the question,
// so that the best of these places counts. A file that cannot be read ends it with 2.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int Ink = 128, NextToNone = 31; // of 255
constexpr int FarthestSought = 20;        // dots
constexpr long MostAside = 3;             // dots, of a picture from the corner of its sheet

// Rows from above, columns from the left, both from 0; how far each dot is from white, 0 to 255.
struct Picture {
    long Width = 0, Height = 0;
    std::vector<unsigned char> Dots;

    int At(long x, long y) const { return Dots[static_cast<std::size_t>(y * Width + x)]; }
};

[[noreturn]] void Refuse(const std::string& path) {
    std::fprintf(stderr, "%s: not a picture of 8 bits a colour\n", path.c_str());
    std::exit(2);
}

Picture ReadPicture(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string kind;
    long most = 0;
    Picture picture;
    if (!(file >> kind >> picture.Width >> picture.Height >> most) || kind != "P6" || most != 255)
        Refuse(path);
    file.get();
    std::string row(static_cast<std::size_t>(picture.Width) * 3, '\0');
    for (long y = 0; y < picture.Height; ++y) {
        if (!file.read(row.data(), static_cast<std::streamsize>(row.size()))) Refuse(path);
        for (std::size_t i = 0; i < row.size(); i += 3) {
            const auto part = [&](std::size_t k) { return static_cast<unsigned char>(row[i + k]); };
            picture.Dots.push_back(static_cast<unsigned char>(255 - std::min({part(0), part(1), part(2)})));
        }
    }
    return picture;
}

// The part of the page that is as large as the picture and begins that far right and down; white beyond the
// page.
Picture PartOf(const Picture& page, const Picture& like, long right, long down) {
    Picture part{like.Width, like.Height, {}};
    for (long y = down; y < like.Height + down; ++y)
        for (long x = right; x < like.Width + right; ++x) {
            const bool within = x >= 0 && y >= 0 && x < page.Width && y < page.Height;
            part.Dots.push_back(static_cast<unsigned char>(within ? page.At(x, y) : 0));
        }
    return part;
}

// True when the other picture shows anything on the rim of the square about a dot.
bool OnRim(const Picture& other, long x, long y, long reach) {
    for (long v = std::max(y - reach, 0L); v <= std::min(y + reach, other.Height - 1); ++v) {
        const bool edge = v == y - reach || v == y + reach;
        for (long u = x - reach; u <= x + reach; u += edge ? 1 : std::max(2 * reach, 1L))
            if (u >= 0 && u < other.Width && other.At(u, v) > NextToNone) return true;
    }
    return false;
}

int DistanceTo(const Picture& other, long x, long y) {
    int reach = 0;
    while (reach < FarthestSought && !OnRim(other, x, y, reach))
        ++reach;
    return reach;
}

struct Apart {
    long Dots = 0;
    int Farthest = 0;
};

void AddApart(const Picture& picture, const Picture& other, Apart& apart) {
    for (long y = 0; y < picture.Height; ++y)
        for (long x = 0; x < picture.Width; ++x) {
            if (picture.At(x, y) < Ink) continue;
            const int distance = DistanceTo(other, x, y);
            apart.Dots += distance > 1 ? 1 : 0;
            apart.Farthest = std::max(apart.Farthest, distance);
        }
}

Apart Compare(const Picture& wanted, const Picture& read) {
    Apart apart;
    AddApart(wanted, read, apart);
    AddApart(read, wanted, apart);
    return apart;
}

// The best of the places on a sheet, the corner first.
Apart CompareOnSheet(const Picture& wanted, const Picture& sheet) {
    Apart best = Compare(wanted, PartOf(sheet, wanted, 0, 0));
    for (long right = -MostAside; right <= MostAside; ++right)
        for (long down = -MostAside; down <= MostAside && best.Dots > 0; ++down) {
            const Apart apart = Compare(wanted, PartOf(sheet, wanted, right, down));
            if (apart.Dots < best.Dots) best = apart;
        }
    return best;
}

} // namespace

int main(int count, char** words) {
    if (count != 3) {
        std::fprintf(stderr, "ink-distance WANTED.ppm READ.ppm\n");
        return 2;
    }
    const Picture wanted = ReadPicture(words[1]), read = ReadPicture(words[2]);
    const bool same = wanted.Width == read.Width && wanted.Height == read.Height;
    const Apart apart = same ? Compare(wanted, read) : CompareOnSheet(wanted, read);
    const auto ink =
        std::count_if(wanted.Dots.begin(), wanted.Dots.end(), [](int dot) { return dot >= Ink; });
    std::printf("%ld %ld %d\n", static_cast<long>(ink), apart.Dots, apart.Farthest);
    return 0;
}
