// What is written has the elements, attributes and nesting that the tools' own files have. A table for each tool says
// what these are.

#include "designs/formats/WrittenFiles.h"
#include "designs/TextFormats.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <pugixml.hpp>
#include <simdjson.h>
#include <sstream>

namespace {

// Names of attributes and children, and whether no file of the tool lacks them.
using Names = std::map<std::string, bool>;

struct Row {
    Names attributes;
    Names children;
};

// A name without the marks of a table: parentheses, "!", quotes.
std::string bare(std::string name)
{
    std::erase_if(name, [](char letter) { return std::string_view("()!\"").find(letter) != std::string_view::npos; });
    return name;
}

Names namesIn(const std::string& text)
{
    Names names;
    std::istringstream words(text);
    for (std::string word; words >> word;)
        names.emplace(bare(word), word.ends_with('!'));
    return names;
}

// "NAME TYPE: ATTRIBUTES | CHILDREN", a line each.
std::map<std::string, Row> tableOf(const std::string& tool)
{
    std::map<std::string, Row> table;
    std::istringstream lines(bytesOf("elements/" + tool + ".txt"));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(": ");
        if (line.starts_with('#') || colon == std::string::npos)
            continue;
        const std::size_t bar = std::min(line.find('|'), line.size());
        table[bare(line.substr(0, colon))] = {namesIn(line.substr(colon + 1, bar - colon - 1)),
                                              namesIn(line.substr(std::min(bar + 1, line.size())))};
    }
    return table;
}

class Comparison {
public:
    explicit Comparison(const std::string& tool) : table(tableOf(tool)) {}

    void compare(const std::string& name, const Names& attributes, const Names& children) const
    {
        const auto row = table.find(name);
        if (row == table.end()) {
            ADD_FAILURE() << "no file of the tool has " << name;
            return;
        }
        compareNames(name, attributes, row->second.attributes);
        compareNames(name, children, row->second.children);
    }

    void compare(pugi::xml_node node, bool isExtension) const
    {
        Names attributes;
        for (const pugi::xml_attribute attribute : node.attributes())
            if (!std::string_view(attribute.name()).starts_with("xmlns"))
                attributes.emplace(attribute.name(), true);
        Names children;
        const bool isBelow = isExtension || std::string_view(node.name()) == "xmi:Extension";
        for (const pugi::xml_node child : node.children()) {
            if (child.type() != pugi::node_element)
                continue;
            children.emplace(child.name(), true);
            compare(child, isBelow);
        }
        const std::string type = node.attribute("xmi:type").value();
        const std::string around = std::string(node.parent().name()) + "/";
        const std::string name =
            isExtension ? around + node.name() : node.name() + (type.empty() ? std::string() : " " + type);
        compare(name, attributes, children);
    }

    void compare(simdjson::dom::element value) const
    {
        if (value.is_array()) {
            for (const simdjson::dom::element each : simdjson::dom::array(value))
                compare(each);
        } else if (value.is_object()) {
            Names names;
            for (const auto& [name, member] : simdjson::dom::object(value)) {
                names.emplace(name, true);
                compare(member);
            }
            if (std::string_view type; value["_type"].get(type) == simdjson::SUCCESS)
                compare(std::string(type), names, {});
        }
    }

private:
    static void compareNames(const std::string& name, const Names& written, const Names& allowed)
    {
        for (const auto& [each, isWritten] : written)
            EXPECT_TRUE(allowed.contains(each)) << "no file of the tool has " << each << " in " << name;
        for (const auto& [each, isNeeded] : allowed)
            EXPECT_TRUE(!isNeeded || written.contains(each)) << name << " lacks " << each;
    }

    const std::map<std::string, Row> table;
};

// Which none of the files has all of.
design::Design designOfUseCases()
{
    using namespace design;
    Design design = designOf({classNamed("Buy"), classNamed("Pay"), classNamed("Buyer")});
    Package& package = design.root.packages[0];
    for (Classifier& classifier : package.classifiers)
        classifier.kind = classifier.name == "Buyer" ? ClassifierKind::Actor : ClassifierKind::UseCase;
    package.associations = {association("Buyer", "Buy")};
    Diagram diagram = diagramOf({"Buy", "Pay", "Buyer"});
    diagram.kind = DiagramKind::UseCase;
    for (const char* const stereotype : {"include", "extend"}) {
        Relationship& relationship = package.relationships.emplace_back();
        relationship.id = relationship.stereotype = stereotype;
        relationship.client.id = "Buy";
        relationship.supplier.id = "Pay";
        diagram.lines.emplace_back().elementId = stereotype;
    }
    package.diagrams = {diagram};
    return design;
}

void compareWithTables(design::Design design, const std::string& tool)
{
    const Comparison comparison(tool);
    const Comparison model("xmi"); // beside the diagrams of papyrus
    for (const design::WrittenFile& file : textsOf(std::move(design), tool, false).files) {
        if (tool == "staruml") {
            simdjson::dom::parser parser;
            comparison.compare(parser.parse(file.text));
            continue;
        }
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(file.text.c_str()));
        const pugi::xml_node root = document.document_element();
        (std::string_view(root.name()) == "uml:Model" ? model : comparison).compare(root, false);
    }
}

class Elements : public testing::TestWithParam<const char*> {};

TEST_P(Elements, AreThoseOfTheToolItself)
{
    for (const char* const name : designFiles()) {
        SCOPED_TRACE(name);
        compareWithTables(designIn(name), GetParam());
    }
    compareWithTables(designOfUseCases(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(, Elements, testing::Values("ea", "staruml", "papyrus", "xmi"),
                         [](const auto& instance) { return instance.param; });

} // namespace
