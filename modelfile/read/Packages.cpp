#include "modelfile/read/Tables.h"

namespace modelfile {

namespace {

// A package before it is clear what it will be: its kind can stand behind its contents.
struct PackageParts : KivPackage {
    std::vector<KivPackage*> children;
    std::string_view id;
    bool isDesignPackage = true;

    void takeId(Builder& builder, Value& value) { id = builder.references.takeId(value, nullptr); }
};

constexpr auto noteFields =
    fieldTable(Field<KivNote>{"id", [](Builder& builder, KivNote& note,
                                       Value& value) { (void)builder.references.takeId(value, &note); }},
               knownKind<KivNote>(), Field<KivNote>{"text", readMember<&KivObject::description, KivNote>});

KivObject* readNote(Builder& builder, Object& object)
{
    auto* const note = builder.create<KivNote>();
    builder.readFields(object, *note, noteFields);
    return note;
}

constexpr std::array<std::string_view, 6> elementKinds = {"note",           "class",      "association",
                                                          "generalization", "dependency", "realization"};
constexpr std::array<KivObject* (*)(Builder&, Object&), elementKinds.size()> elementReaders = {
    readNote, readClass, readAssociation, readGeneralization, readDependency, readRealization};

KivObject* readModelElement(Builder& builder, Value& value)
{
    const char* const at = Builder::tokenOf(value).data();
    Object object = builder.readObject(value);
    const std::size_t kind = builder.readKind(object, elementKinds, elementKinds.size());
    if (kind == elementKinds.size())
        Builder::fail(at, "a kind of element", "no \"kind\"", "kind");
    return elementReaders[kind](builder, object);
}

constexpr std::array<std::string_view, 2> packageKinds = {"designPackage", "package"};

constexpr auto packageFields = withCommonFields(fieldTable(
    Field<PackageParts>{"kind",
                        [](Builder& builder, PackageParts& parts, Value& value) {
                            parts.isDesignPackage = builder.readChoice(value, packageKinds) == 0;
                        }},
    Field<PackageParts>{"modelElements", [](Builder& builder, PackageParts& parts,
                                            Value& value) { readModelElements(builder, parts, value); }},
    Field<PackageParts>{"childPackages",
                        [](Builder& builder, PackageParts& parts, Value& value) {
                            builder.readList(value, [&](Value& item, std::size_t /*index*/) {
                                parts.children.push_back(readPackage(builder, item, builder.packageLevel + 1));
                            });
                        }},
    Field<PackageParts>{
        "diagrams", [](Builder& builder, PackageParts& parts, Value& value) { readDiagrams(builder, parts, value); }}));

[[noreturn]] void failTooDeep(Builder& builder, Value& value)
{
    const char* const at = Builder::tokenOf(value).data();
    Object object = builder.readObject(value);
    std::string name;
    builder.findField(object, "name", [&](Value& text) { name = builder.readText(text); });
    Builder::fail(at, "packages nested at most " + std::to_string(deepestPackageLevel) + " levels deep",
                  "one more: " + text::jsonQuoted(name));
}

KivPackage* packageOf(Builder& builder, PackageParts& parts)
{
    KivPackage* package = nullptr;
    if (parts.isDesignPackage)
        package = builder.create<KivDesignPackage>();
    else
        package = builder.create<KivPackage>();
    package->setName(parts.getName());
    package->description = parts.description;
    package->stereotype = parts.stereotype;
    package->modelLevel = parts.modelLevel;
    package->notes = std::move(parts.notes);
    package->projections = std::move(parts.projections);
    package->modelElements = std::move(parts.modelElements);
    package->diagrams = std::move(parts.diagrams);
    setDiagramPackages(*package);
    for (KivPackage* const child : parts.children)
        package->addChildPackage(child);
    if (parts.id.data())
        builder.references.tellAddress(parts.id, package);
    return package;
}

} // namespace

void readModelElements(Builder& builder, KivPackage& package, Value& value)
{
    MadeObjects<KivObject> made(builder);
    builder.readList(value, [&](Value& item, std::size_t /*index*/) { made.add(readModelElement(builder, item)); });
    made.moveTo(package.modelElements);
}

KivPackage* readPackage(Builder& builder, Value& value, std::size_t level)
{
    if (level > deepestPackageLevel)
        failTooDeep(builder, value);
    Object object = builder.readObject(value);
    const std::size_t place = builder.places ? builder.places->current : 0;
    PackageParts parts;
    builder.packageLevel = level;
    builder.readFields(object, parts, packageFields);
    builder.packageLevel = level - 1;
    if (builder.places)
        builder.places->current = place;
    return packageOf(builder, parts);
}

std::vector<ObjectKeys> packageKeys()
{
    return {keysOf("package", packageFields), keysOf("note", noteFields)};
}

} // namespace modelfile
