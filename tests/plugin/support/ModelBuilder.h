#pragma once

#include "kiv/KivIbmRationalRose98ExportDllInterface.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

/// A model in memory, made piece by piece. Every function makes one object, puts it where it belongs and returns it, so
/// that a test sets the other fields itself.
class ModelBuilder {
public:
    KivModel model;

    template <class Element>
    Element* make(const KivString& name)
    {
        auto* const element = model.create<Element>();
        element->setName(name);
        return element;
    }

    /// Without a parent the package is a child of the model.
    KivDesignPackage* package(const KivString& name, KivPackage* parent = nullptr)
    {
        auto* const result = make<KivDesignPackage>(name);
        (parent ? parent : &model)->addChildPackage(result);
        return result;
    }

    KivType* type(const KivString& name, const KivString& dataType = {}, int length = 0, int scale = 0)
    {
        auto* const result = make<KivBaseType>(name);
        result->dataType = dataType;
        result->length = length;
        result->scale = scale;
        model.types.add(result);
        return result;
    }

    /// The literals, names and values, stand in the order given.
    KivType* enumeration(const KivString& name, std::initializer_list<std::pair<const char*, const char*>> literals)
    {
        auto* const result = type(name);
        for (const auto& [literalName, value] : literals) {
            auto* const literal = make<KivTypeValue>(literalName);
            literal->value = value;
            literal->position = static_cast<std::int16_t>(result->typeValues.count());
            result->typeValues.add(literal);
        }
        return result;
    }

    KivClass* addClass(const KivString& name, KivPackage* package) { return element<KivClass>(name, package); }

    KivAttribute* attribute(const KivString& name, KivClass* owner, KivType* type = nullptr)
    {
        auto* const result = make<KivAttribute>(name);
        result->type = type;
        owner->attributes.add(result);
        return result;
    }

    KivOperation* operation(const KivString& name, KivClass* owner)
    {
        auto* const result = make<KivOperation>(name);
        owner->operations.add(result);
        return result;
    }

    /// For `KivOperation::arguments` and `KivClass::parameters`.
    KivArgument* argument(const KivString& name, KivLinkTree<KivArgument>& arguments, KivType* type = nullptr,
                          int position = 0)
    {
        auto* const result = make<KivArgument>(name);
        result->type = type;
        result->position = static_cast<std::int16_t>(position);
        arguments.add(result);
        return result;
    }

    template <class Key>
    Key* key(const KivString& name, KivClass* owner, std::initializer_list<KivAttribute*> attributes)
    {
        auto* const result = make<Key>(name);
        owner->keys.add(result);
        for (KivAttribute* const attribute : attributes) {
            result->attributes.add(attribute);
            attribute->keys.add(result);
        }
        return result;
    }

    KivAssociation* association(const KivString& name, KivPackage* package)
    {
        return element<KivAssociation>(name, package);
    }

    KivAssociationRole* role(const KivString& name, KivAssociation* association, KivClass* participant)
    {
        auto* const result = make<KivAssociationRole>(name);
        result->participant = participant;
        association->roles.add(result);
        return result;
    }

    /// An association with a role for each class; the roles are named `first`, `second`.
    KivAssociation* association(const KivString& name, KivPackage* package, KivClass* first, KivClass* second)
    {
        auto* const result = association(name, package);
        role("first", result, first);
        role("second", result, second);
        return result;
    }

    KivGeneralization* generalization(const KivString& name, KivPackage* package,
                                      std::initializer_list<KivClass*> subtypes,
                                      std::initializer_list<KivClass*> supertypes)
    {
        auto* const result = element<KivGeneralization>(name, package);
        for (KivClass* const subtype : subtypes) {
            result->subtypes.add(subtype);
            if (subtype)
                subtype->generalizations.add(result);
        }
        for (KivClass* const supertype : supertypes)
            result->supertypes.add(supertype);
        return result;
    }

    KivRealization* realization(const KivString& name, KivPackage* package, KivClass* client, KivClass* supplier)
    {
        auto* const result = element<KivRealization>(name, package);
        result->client = client;
        result->supplier = supplier;
        client->realizations.add(result);
        return result;
    }

    KivDependency* dependency(const KivString& name, KivPackage* package, KivClass* client, KivClass* supplier)
    {
        auto* const result = element<KivDependency>(name, package);
        result->client = client;
        result->supplier = supplier;
        client->dependencies.add(result);
        return result;
    }

    KivClassDiagram* diagram(const KivString& name, KivPackage* package,
                             std::initializer_list<KivModelObject*> elements = {})
    {
        auto* const result = make<KivClassDiagram>(name);
        result->package = package;
        package->diagrams.add(result);
        for (KivModelObject* const element : elements)
            result->elements.add(element);
        return result;
    }

    /// Where `object` stands on `diagram`; the centre and the size in model units.
    KivProjection* projection(KivModelObject* object, KivClassDiagram* diagram, int x, int y, int width, int height)
    {
        auto* const result = project<KivProjection>(object, diagram);
        result->x = x;
        result->y = y;
        result->width = width;
        result->height = height;
        return result;
    }

    KivRelationshipProjection* lineProjection(KivModelObject* object, KivClassDiagram* diagram,
                                              const KivString& vertices)
    {
        auto* const result = project<KivRelationshipProjection>(object, diagram);
        result->vertices = vertices;
        return result;
    }

    KivNote* note(const KivString& text, KivModelObject* object)
    {
        auto* const result = model.create<KivNote>();
        result->description = text;
        object->notes.add(result);
        return result;
    }

private:
    template <class Element>
    Element* element(const KivString& name, KivPackage* package)
    {
        auto* const result = make<Element>(name);
        package->modelElements.add(result);
        return result;
    }

    template <class Projection>
    Projection* project(KivModelObject* object, KivClassDiagram* diagram)
    {
        auto* const result = model.create<Projection>();
        result->diagram = diagram;
        object->projections.add(result);
        return result;
    }
};

/// Notes what is logged, as `IDENTIFIER` or `IDENTIFIER argument`, and then does what the test wants.
class RecordingLog : public KivLog {
public:
    void add(const KivLogEntry& entry) override
    {
        std::string text = entry.identifier.getName();
        if (!entry.argument.isEmpty())
            text.append(" ").append(entry.argument.view());
        entries.push_back(std::move(text));
        if (onEntry)
            onEntry(entry);
    }

    std::vector<std::string> entries;
    std::function<void(const KivLogEntry&)> onEntry;
};

/// An empty file that is removed at the end.
class TemporaryPath {
public:
    TemporaryPath()
    {
        const int descriptor = mkstemp(path.data());
        if (descriptor < 0)
            throw std::runtime_error("cannot make " + path);
        close(descriptor);
    }
    ~TemporaryPath() { unlink(path.c_str()); }
    TemporaryPath(const TemporaryPath&) = delete;
    TemporaryPath& operator=(const TemporaryPath&) = delete;

    [[nodiscard]] const char* get() const { return path.c_str(); }
    [[nodiscard]] std::string content() const
    {
        std::string bytes(std::filesystem::file_size(path), '\0');
        std::ifstream file(path, std::ios::binary);
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return bytes;
    }

private:
    std::string path = testing::TempDir() + "petal-test-XXXXXX";
};

using OptionValues = std::initializer_list<std::pair<const KivBridgeOptionLiteral&, std::string_view>>;

/// The options of the bridge with their defaults, some set to other values, and the output path.
inline KivOptionList optionsFor(const char* path, OptionValues values = {})
{
    KivOptionList options;
    KivIbmRationalRose98ExportDllInterface().getOptionList(options);
    options.setValue(BP_FILE.getName(), path);
    for (const auto& [option, value] : values)
        options.setValue(option.getName(), KivString(value));
    return options;
}

/// Exports `model` and returns the file.
inline std::string exportedFile(KivModel& model, KivLog& log, OptionValues values = {})
{
    const TemporaryPath path;
    KivOptionList options = optionsFor(path.get(), values);
    EXPECT_EQ(KivIbmRationalRose98ExportDllInterface().run("", model, options, log), 1);
    return path.content();
}

inline std::string exportedFile(KivModel& model, OptionValues values = {})
{
    RecordingLog log;
    return exportedFile(model, log, values);
}

/// The part of a file between its fixed header and footer, the line start of `root_category` included.
inline std::string logicalViewOf(std::string_view file)
{
    constexpr std::string_view headerEnd = "\titems      \t(list diagram_item_list))))";
    constexpr std::string_view footerBegin = "\r\n\troot_subsystem \t(object SubSystem \"Component View\"\r\n";
    const std::size_t begin = file.find(headerEnd);
    const std::size_t end = file.rfind(footerBegin);
    if (begin == std::string_view::npos || end == std::string_view::npos)
        return "(header or footer is missing)";
    return std::string(file.substr(begin + headerEnd.size(), end - begin - headerEnd.size()));
}

inline std::string exportedLogicalView(KivModel& model, OptionValues values = {})
{
    return logicalViewOf(exportedFile(model, values));
}

/// The lines of a readable text as the file has them: each begins with CR LF, four blanks at its start are a tab, and
/// the escapes \t, \r, \n, \\ stand for themselves elsewhere. The text begins with a line end; one at its end is
/// dropped.
inline std::string petalLines(std::string_view readable)
{
    std::string result;
    bool isLineStart = false;
    if (!readable.empty() && readable.back() == '\n')
        readable.remove_suffix(1);
    while (!readable.empty()) {
        std::size_t taken = 1;
        const char second = readable.size() > 1 ? readable[1] : '\0';
        if (readable.front() == '\n') {
            result += "\r\n";
            isLineStart = true;
        } else if (isLineStart && readable.starts_with("    ")) {
            result += '\t';
            taken = 4;
        } else if (readable.front() == '\\' && second != '\0') {
            result += second == 't' ? '\t' : second == 'r' ? '\r' : second == 'n' ? '\n' : second;
            isLineStart = false;
            taken = 2;
        } else {
            result += readable.front();
            isLineStart = false;
        }
        readable.remove_prefix(taken);
    }
    return result;
}
