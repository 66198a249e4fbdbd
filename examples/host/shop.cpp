// A host with a small design: two classes, an association between them, and the diagram that shows them. Writes it to
// the file that the command line names.

#include <kiv/KivConnecting.h>
#include <kiv/KivIbmRationalRose98ExportDllInterface.h>

#include <fstream>
#include <iostream>
#include <string>

namespace {

// Adds a class to the package, and to the diagram, where its centre is at the given place.
KivClass* addClass(KivModel& model, KivClassDiagram* diagram, const char* name, int x, int y)
{
    auto* const result = model.create<KivClass>();
    result->setName(name);
    diagram->package->modelElements.add(result);

    auto* const box = model.create<KivProjection>();
    box->diagram = diagram;
    box->x = x;
    box->y = y;
    box->width = 420;
    box->height = 180;
    result->projections.add(box);
    diagram->elements.add(result);
    return result;
}

void addAttribute(KivModel& model, KivClass* owner, const char* name, KivType* type)
{
    auto* const attribute = model.create<KivAttribute>();
    attribute->setName(name);
    attribute->type = type;
    attribute->visibility = KivVisibility::Private;
    owner->attributes.add(attribute);
}

// One end of an association. Its line leads from the middle of the association to its class.
KivAssociationRole* addRole(KivModel& model, KivAssociation* association, KivClass* participant, const char* line)
{
    auto* const role = model.create<KivAssociationRole>();
    role->participant = participant;
    role->isNavigable = true;
    auto* const drawn = model.create<KivRelationshipProjection>();
    drawn->diagram = participant->projections.at(0)->diagram;
    drawn->vertices = line;
    role->projections.add(drawn);
    association->roles.add(role);
    return role;
}

void addAssociation(KivModel& model, KivClassDiagram* diagram, KivClass* customer, KivClass* order)
{
    auto* const places = model.create<KivAssociation>();
    places->setName("places");
    diagram->package->modelElements.add(places);
    addRole(model, places, order, "(750,200)\r\n(990,200)")->multiplicity = {0, -1, true}; // any number of orders
    addRole(model, places, customer, "(750,200)\r\n(510,200)")->multiplicity = {1, 1, true};

    auto* const middle = model.create<KivProjection>();
    middle->diagram = diagram;
    middle->x = 750;
    middle->y = 200;
    places->projections.add(middle);
    diagram->elements.add(places);
}

void buildModel(KivModel& model)
{
    model.setName("Shop");
    auto* const text = model.create<KivBaseType>();
    text->setName("Text");
    text->dataType = "VARCHAR";
    text->length = 80;
    model.types.add(text);

    auto* const sales = model.create<KivDesignPackage>();
    sales->setName("Sales");
    model.addChildPackage(sales);

    auto* const overview = model.create<KivClassDiagram>();
    overview->setName("Overview");
    overview->package = sales;
    sales->diagrams.add(overview);

    KivClass* const customer = addClass(model, overview, "Customer", 300, 200);
    KivClass* const order = addClass(model, overview, "Order", 1200, 200);
    addAttribute(model, customer, "name", text);
    addAttribute(model, order, "remark", text);
    addAssociation(model, overview, customer, order);
    connect(model);
}

// Progress: an entry for each package and for each kind of element in it.
class PrintingLog : public KivLog {
public:
    void add(const KivLogEntry& entry) override { std::clog << entry.getText().view() << '\n'; }
};

// The plug-in does not learn that a disk was full, so its last line is looked for.
bool isComplete(const char* path)
{
    const std::string lastLine = "\"38F75B630146\"))\r\n";
    std::ifstream file(path, std::ios::binary);
    file.seekg(-static_cast<std::streamoff>(lastLine.size()), std::ios::end);
    std::string end(lastLine.size(), '\0');
    return file.read(end.data(), static_cast<std::streamsize>(end.size())) && end == lastLine;
}

} // namespace

int main(int argc, char** argv)
try {
    if (argc != 2) {
        std::cerr << "usage: shop FILE\n";
        return 2;
    }
    KivModel model;
    buildModel(model);

    KivIbmRationalRose98ExportDllInterface plugin;
    KivOptionList options;
    plugin.getOptionList(options); // all options with their defaults
    options.setValue(BP_FILE.getName(), argv[1]);
    PrintingLog log;
    plugin.run("shop", model, options, log);
    if (isComplete(argv[1]))
        return 0;
    std::cerr << argv[1] << ": the file could not be written whole\n";
    return 1;
} catch (const KivException& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
