#include "Parsed.h"

namespace {

// Labels that the file gives no place. They have ten letters: 205 wide, a line 50 high, 10 beside their line.

constexpr const char* boxes = R"((object ClassView "Class" "A" @1 location (200, 200) width 100 height 100)
(object ClassView "Class" "B" @2 location (1200, 200) width 100 height 100))";

std::string labelled(int view, const std::string& lineKeys, const std::string& labelKeys)
{
    return "(object UsesView \"\" @" + std::to_string(view) + " " + lineKeys +
           " label (object SegLabel \"\" label \"some words\" " + labelKeys + "))";
}

void expectCentre(const render::Rect& room, render::Point centre, const std::string& row)
{
    EXPECT_NEAR(room.centre().x, centre.x, 0.3) << row;
    EXPECT_NEAR(room.centre().y, centre.y, 0.3) << row;
}

// In files of Rose: at the part of the line that they name, and beside the boxes at its ends.
TEST(LabelPlaces, OfRoseFilesAreBesideTheirLine)
{
    const struct {
        const char* keys;
        render::Point centre;
    } rows[] = {
        {"", {700, 165}},
        {"orientation 0", {700, 165}},
        {"orientation 1", {700, 235}},
        {"pctDist 0.25", {475, 165}},
        {"pctDist 0.1", {354.5, 165}},  // 2 right of A
        {"pctDist 0.9", {1045.5, 165}}, // 2 left of B
        {"pctDist 0", {250, 123}},      // 2 above A
        {"pctDist 0 orientation 1", {250, 277}},
        {"pctDist -3", {250, 123}},
        {"pctDist 7", {1150, 123}},
    };
    for (const auto& row : rows) {
        const Parsed picture(boxes + labelled(3, "client @1 supplier @2", row.keys), "", render::mostInSvg,
                             "\n(object Petal\n version 42\n charSet 0)\n(object Design \"Logical View\"\n");
        expectCentre(rectOf(itemOf(picture.svg, 3).child("rect")), row.centre, row.keys);
    }
}

TEST(LabelPlaces, OfRoseFilesAreBelowEachOther)
{
    const char* const keys = "client @1 supplier @2";
    const Parsed picture(boxes + labelled(3, keys, "") + labelled(4, keys, "") + labelled(5, keys, "pctDist 0.4") +
                             labelled(6, keys, "pctDist 0.28"),
                         "", render::mostInSvg,
                         "\n(object Petal\n version 42\n charSet 0)\n(object Design \"Logical View\"\n");
    const render::Point centres[] = {{700, 165}, {700, 215}, {610, 265}, {502, 165}};
    for (int view = 3; view < 7; ++view)
        expectCentre(rectOf(itemOf(picture.svg, view).child("rect")), centres[view - 3], std::to_string(view));
}

// The nearest place at which they cover nothing.
TEST(LabelPlaces, OfExportsAreTheNearestThatAreFree)
{
    const auto box = [](const char* place, const char* size) {
        return std::string("(object ClassView \"Class\" \"C\" @9 location ") + place + " " + size + ")";
    };
    const auto line = [](const char* points) {
        return std::string("(object AttachView \"\" @9 vertices (list Points ") + points + "))";
    };
    const struct {
        const char* name;
        std::string others;
        const char* keys;
        render::Point centre;
    } rows[] = {
        {"free", "", "", {700, 165}},
        {"on the other side", "", "orientation 1", {700, 235}},
        {"a box above", box("(700, 120)", "width 40 height 60"), "", {700, 235}},
        {"a box above and a line below",
         box("(700, 120)", "width 40 height 60") + line("(0, 230) (3000, 230)"),
         "",
         {700, 265}},
        {"a box all along the line, and lines on the other side",
         box("(700, -225)", "width 900 height 750") +
             line("(0, 230) (3000, 230) (3000, 280) (0, 280) (0, 330) (3000, 330)"),
         "",
         {610, 235}}, // rather on a line than on a box
        {"a box just beyond it", box("(700, 107)", "width 40 height 60"), "", {700, 165}},
        {"a line above", line("(0, 165) (3000, 165)"), "", {700, 235}},
        {"a line just beyond it", line("(0, 137) (3000, 137)"), "", {700, 165}},
        {"a place that is free", "", "anchor_loc 1 location (800, 100)", {800, 100}},
        {"a place that is too far", "", "anchor_loc 1 location (700, -60)", {700, 165}},
        {"a place that is just near enough", "", "anchor_loc 1 location (700, -40)", {700, -40}},
        {"a place on its line", "", "anchor_loc 1 location (800, 190)", {700, 165}},
        {"a place that is none", "", "anchor_loc 1 location (12, 120)", {700, 165}},
    };
    for (const auto& row : rows) {
        const Parsed picture(boxes + row.others + labelled(3, "client @1 supplier @2", row.keys), "", render::mostInSvg,
                             exportStart);
        expectCentre(rectOf(itemOf(picture.svg, 3).child("rect")), row.centre, row.name);
    }
}

TEST(LabelPlaces, OfExportsAreAroundTheMiddleOfTheLine)
{
    const char* const keys = "client @1 supplier @2";
    std::string items = boxes;
    for (int view = 3; view < 7; ++view)
        items += labelled(view, keys, "");
    const Parsed picture(items, "", render::mostInSvg, exportStart);
    const render::Point centres[] = {{700, 165}, {700, 235}, {700, 85}, {700, 315}};
    for (int view = 3; view < 7; ++view)
        expectCentre(rectOf(itemOf(picture.svg, view).child("rect")), centres[view - 3], std::to_string(view));
}

TEST(LabelPlaces, OfRolesAreAtTheEndsOfTheirAssociation)
{
    const struct {
        const char* place;
        const char* keys;
        render::Point first;
        render::Point second;
    } rows[] = {
        {"(1200, 200)", "", {362.5, 245}, {1037.5, 155}},
        {"(1200, 200)", "orientation 1", {362.5, 155}, {1037.5, 245}},
        {"(200, 1200)", "", {77.5, 285}, {322.5, 1115}},
        {"(520, 200)", "", {260, 315}, {460, 85}}, // too short a line for the label, which would cover the boxes
    };
    for (const auto& row : rows) {
        const std::string label = std::string(" label (object SegLabel \"\" label \"some words\" ") + row.keys + ")";
        const Parsed picture("(object ClassView \"Class\" \"A\" @1 location (200, 200) width 100 height 100)"
                             "(object ClassView \"Class\" \"B\" @2 width 100 height 100 location " +
                                 std::string(row.place) +
                                 ")(object AssociationViewNew \"\" @3 roleview_list (list RoleViews "
                                 "(object RoleView \"\" @4 client @3 supplier @1" +
                                 label + ")(object RoleView \"\" @5 client @3 supplier @2" + label + ")))",
                             "", render::mostInSvg, exportStart);
        expectCentre(rectOf(itemOf(picture.svg, 4).child("rect")), row.first, row.place);
        expectCentre(rectOf(itemOf(picture.svg, 5).child("rect")), row.second, row.place);
    }
}

} // namespace
