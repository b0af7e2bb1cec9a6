#include "batch/outputs/ProfileOutputs.h"

#include "batch/outputs/CsvParts.h"
#include "batch/outputs/JsonParts.h"

namespace Quillon {

namespace {

// The columns that a profile and a map have in common.
void AddEnd(std::vector<std::string>& fields, const ProfilePoint& point) {
    fields.push_back(ShortestText(point.SumSq));
    fields.push_back(ShortestText(point.Ratio));
    fields.push_back(point.Converged ? "yes" : "no");
}

void AddEndMembers(std::vector<std::string>& members, const ProfilePoint& point) {
    members.push_back(JsonMember("sum_of_squares", JsonNumber(point.SumSq)));
    members.push_back(JsonMember("ratio", JsonNumber(point.Ratio)));
    members.push_back(JsonMember("converged", JsonFlag(point.Converged)));
}

std::string LevelList(const std::vector<ProfileLimits>& levels, bool withLimits) {
    std::vector<std::string> items;
    for (const ProfileLimits& level : levels) {
        std::vector<std::string> members{JsonMember("level", JsonNumber(level.Level)),
                                         JsonMember("ratio", JsonNumber(level.Ratio))};
        if (withLimits) {
            members.push_back(JsonMember("lower", JsonNumber(level.Lower)));
            members.push_back(JsonMember("upper", JsonNumber(level.Upper)));
        }
        items.push_back(InlineObject(members));
    }
    return JsonList(items);
}

std::string NoteList(const std::vector<std::string>& notes) {
    std::vector<std::string> items;
    for (const std::string& note : notes)
        items.push_back(JsonString(note));
    return InlineList(items);
}

} // namespace

std::string ProfileCsv(const Profile& profile) {
    std::string text = "slot,name,value,sum_of_squares,ratio,converged\n";
    for (const ProfilePoint& point : profile.Points) {
        std::vector<std::string> fields{std::to_string(profile.Slot), profile.Name,
                                        ShortestText(point.Value)};
        AddEnd(fields, point);
        text += CsvLine(fields);
    }
    return text;
}

std::string ProfileJson(const Profile& profile) {
    std::vector<std::string> points;
    for (const ProfilePoint& point : profile.Points) {
        std::vector<std::string> members{JsonMember("value", JsonNumber(point.Value))};
        AddEndMembers(members, point);
        points.push_back(InlineObject(members));
    }
    return JsonText(
        {JsonMember("slot", std::to_string(profile.Slot)), JsonMember("name", JsonString(profile.Name)),
         JsonMember("minimum",
                    InlineObject({JsonMember("value", JsonNumber(profile.MinimumValue)),
                                  JsonMember("sum_of_squares", JsonNumber(profile.MinimumSumSq))})),
         JsonMember("levels", LevelList(profile.Limits, true)), JsonMember("points", JsonList(points)),
         JsonMember("better_minimum", JsonFlag(profile.Better.has_value())),
         JsonMember("notes", NoteList(profile.Notes))});
}

std::string MapCsv(const ProfileMap& map) {
    std::string text = "slot_1,slot_2,value_1,value_2,sum_of_squares,ratio,converged\n";
    for (std::size_t i = 0; i < map.Values[0].size(); ++i)
        for (std::size_t j = 0; j < map.Values[1].size(); ++j) {
            std::vector<std::string> fields{std::to_string(map.Slots[0]), std::to_string(map.Slots[1]),
                                            ShortestText(map.Values[0][i]), ShortestText(map.Values[1][j])};
            AddEnd(fields, map.At(i, j));
            text += CsvLine(fields);
        }
    return text;
}

std::string MapJson(const ProfileMap& map) {
    std::vector<std::string> points;
    for (std::size_t i = 0; i < map.Values[0].size(); ++i)
        for (std::size_t j = 0; j < map.Values[1].size(); ++j) {
            std::vector<std::string> members{JsonMember(
                "values", InlineList({JsonNumber(map.Values[0][i]), JsonNumber(map.Values[1][j])}))};
            AddEndMembers(members, map.At(i, j));
            points.push_back(InlineObject(members));
        }
    const std::string values = InlineList({JsonNumber(map.Minimum[0]), JsonNumber(map.Minimum[1])});
    return JsonText(
        {JsonMember("slots", InlineList({std::to_string(map.Slots[0]), std::to_string(map.Slots[1])})),
         JsonMember("names", NoteList({map.Names[0], map.Names[1]})),
         JsonMember("minimum", InlineObject({JsonMember("values", values),
                                             JsonMember("sum_of_squares", JsonNumber(map.MinimumSumSq))})),
         JsonMember("levels", LevelList(map.Levels, false)), JsonMember("points", JsonList(points)),
         JsonMember("better_minimum", JsonFlag(map.Better.has_value()))});
}

} // namespace Quillon
