#include "designs/formats/ea/write/Write.h"

#include "designs/formats/ea/write/Extension.h"
#include "designs/formats/ea/write/Tree.h"

namespace design::ea {

void write(const Writing& writing, Files& files, Report& report)
{
    Output output(writing, files.begin({}), report);
    {
        xml::Element root(output.xml, "xmi:XMI");
        root.with("xmi:version", "2.1").with("xmlns:uml", "http://schema.omg.org/spec/UML/2.1");
        root.with("xmlns:xmi", "http://schema.omg.org/spec/XMI/2.1");
        xml::Element(output.xml, "xmi:Documentation")
            .with("exporter", "Enterprise Architect")
            .with("exporterVersion", "6.5");
        writeTree(output);
        xml::Element extension(output.xml, "xmi:Extension");
        extension.with("extender", "Enterprise Architect").with("extenderID", "6.5");
        writeElements(output);
        writeConnectors(output);
        writePrimitiveTypes(output);
        xml::Element(output.xml, "profiles");
        writeDiagrams(output);
    }
    output.xml.finish();
    leaveProperties(output);
}

} // namespace design::ea
