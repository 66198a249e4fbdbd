#pragma once

#include "designs/formats/WrittenFiles.h"

#include <pugixml.hpp>
#include <set>
#include <simdjson.h>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

/// Whether everything in a file that names something else leads there, and whether names are given once.

class References {
public:
    /// Adds what the file of that format names.
    void add(std::string_view format, const std::string& text)
    {
        if (format == "staruml") {
            simdjson::dom::parser parser;
            addValue(parser.parse(text), "");
            return;
        }
        pugi::xml_document document;
        if (!document.load_string(text.c_str()))
            faults.push_back("no XML: " + text.substr(0, 200));
        else if (format == "ecore")
            addEcore(document.document_element());
        else
            addXmi(document);
    }

    /// What leads nowhere, and what is there twice.
    [[nodiscard]] std::vector<std::string> faultsFound() const
    {
        std::vector<std::string> all = faults;
        if (named.empty())
            all.emplace_back("nothing names anything");
        for (const std::string& name : named)
            if (!known.contains(name))
                all.push_back("nothing is " + name);
        return all;
    }

private:
    void know(const std::string& name)
    {
        if (!known.insert(name).second)
            faults.push_back("twice: " + name);
    }

    // The connectors and packages of an Extension name themselves with what names others elsewhere.
    void addXmi(const pugi::xml_document& document)
    {
        for (const pugi::xpath_node id : document.select_nodes("//@*[name()='xmi:id']"))
            know(id.attribute().value());
        for (const pugi::xpath_node id : document.select_nodes("//connector/@*[name()='xmi:idref'] | //@package2"))
            known.insert(id.attribute().value());
        constexpr const char* references =
            "//uml:Model//@type | //*[not(self::connector)]/@*[name()='xmi:idref'] | "
            "//@general | //@specific | //@client | //@supplier | //@contract | //@association | //@addition | "
            "//@extendedCase | //@memberEnd | //@navigableOwnedEnd | //@annotatedElement | //@constrainedElement | "
            "//@precondition | //@postcondition | //@bodyCondition | //@parameter | //@parameteredElement | "
            "//@subject | //model/@package | //@owner | //@associationclass | //edges/@source | //edges/@target";
        for (const pugi::xpath_node reference : document.select_nodes(references))
            addWords(reference.attribute().value());
        for (const pugi::xpath_node link : document.select_nodes("//@href")) {
            const std::string_view text = link.attribute().value();
            if (!text.starts_with("pathmap:")) // the tool's own library
                named.emplace(text.substr(text.find('#') + 1));
        }
    }

    void addWords(const std::string& text)
    {
        std::istringstream words(text);
        for (std::string word; words >> word;)
            named.insert(word);
    }

    // Elements are known by the names on the way to them: #//shop/Order/total
    void addEcore(pugi::xml_node package, const std::string& path = "#/")
    {
        for (const pugi::xml_node child : package.children()) {
            const std::string_view role = child.name();
            if (!role.starts_with("eS") && !role.starts_with("eC") && role != "eStructuralFeatures" &&
                role != "eOperations" && role != "eLiterals")
                continue;
            std::string own = path;
            own.append("/").append(child.attribute("name").value());
            if (role == "eOperations") // which may share a name
                known.insert(own);
            else
                know(own);
            addEcore(child, own);
        }
        for (const char* const reference : {"eType", "eSuperTypes", "eOpposite", "eClassifier", "eExceptions"}) {
            std::istringstream words(package.attribute(reference).value());
            for (std::string word; words >> word;)
                if (word.starts_with("#"))
                    named.insert(word);
        }
    }

    void addValue(simdjson::dom::element value, const std::string& owner)
    {
        simdjson::dom::object object;
        simdjson::dom::array list;
        if (value.get(object) == simdjson::SUCCESS)
            addObject(object, owner);
        else if (value.get(list) == simdjson::SUCCESS)
            for (const simdjson::dom::element item : list)
                addValue(item, owner);
    }

    void addObject(simdjson::dom::object object, const std::string& owner)
    {
        std::string_view target;
        if (object["$ref"].get(target) == simdjson::SUCCESS) {
            named.emplace(target);
            return;
        }
        const std::string id(object["_id"].get_string().value());
        know(id);
        std::string_view parent;
        if (object["_parent"]["$ref"].get(parent) != simdjson::SUCCESS)
            parent = "";
        if (parent != owner)
            faults.push_back(id + " lies in " + owner + ", not in " + std::string(parent));
        for (const auto& member : object)
            addValue(member.value, id);
    }

    std::set<std::string> known;
    std::set<std::string> named;
    std::vector<std::string> faults;
};

/// Of all files that came out for a design.
[[nodiscard]] inline std::vector<std::string> deadReferences(std::string_view format,
                                                             const std::vector<design::WrittenFile>& files)
{
    References references;
    for (const design::WrittenFile& file : files)
        references.add(format, file.text);
    return references.faultsFound();
}
