// A host outside of the project: builds a model through the public headers, asks the plug-in for its options, has the
// model written to the file named on the command line, and reads the file back.

#include <kiv/KivIbmRationalRose98ExportDllInterface.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

class SilentLog : public KivLog {
public:
    void add(const KivLogEntry& /*entry*/) override {}
};

void buildModel(KivModel& model)
{
    auto* const integer = model.create<KivBaseType>();
    integer->setName("Number");
    integer->dataType = "INTEGER";
    model.types.add(integer);

    auto* const package = model.create<KivDesignPackage>();
    package->setName("Sales");
    model.addChildPackage(package);

    auto* const order = model.create<KivClass>();
    order->setName("Order");
    package->modelElements.add(order);

    auto* const number = model.create<KivAttribute>();
    number->setName("number");
    number->type = integer;
    order->attributes.add(number);
}

std::string contentOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void require(bool holds, const std::string& what)
{
    if (!holds)
        throw std::runtime_error(what);
}

void exportModel(const char* path)
{
    KivModel model;
    buildModel(model);

    KivIbmRationalRose98ExportDllInterface plugin;
    KivOptionList options;
    plugin.getOptionList(options);
    for (const KivOption& option : options.getOptions())
        std::cout << option.name.view() << " = " << option.defaultValue.view() << '\n';
    require(options.setValue(BP_FILE.getName(), path), "the plug-in does not ask for a file");

    SilentLog log;
    require(plugin.run("outside host", model, options, log) == 1, "the export does not report success");

    const std::string content = contentOf(path);
    require(content.ends_with("\r\n\tquid       \t\"38F75B630146\"))\r\n"), "the file is not complete");
    require(content.find("(object Class \"Order\"\r\n") != std::string::npos, "the file lacks the class");
    require(content.find("(object ClassAttribute \"number\"\r\n") != std::string::npos, "the file lacks the attribute");
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: outside-host FILE\n";
        return EXIT_FAILURE;
    }
    try {
        exportModel(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << "outside-host: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
