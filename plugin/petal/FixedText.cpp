#include "petal/FixedText.h"

#include "petal/PetalWriter.h"

#include <iterator>

namespace {

constexpr const char* header_98[] = {
    "\r\n",
    "(object Petal\r\n",
    "    version    \t42\r\n",
    "    _written   \t\"Rose 4.5.8054a\"\r\n",
    "    charSet    \t0)\r\n",
    "\r\n",
    "(object Design \"Logical View\"\r\n",
    "    is_unit    \tTRUE\r\n",
    "    is_loaded  \tTRUE\r\n",
    "    quid       \t\"38F75B63013A\"\r\n",
    "    defaults   \t(object defaults\r\n",
    "\trightMargin \t0.250000\r\n",
    "\tleftMargin \t0.250000\r\n",
    "\ttopMargin  \t0.250000\r\n",
    "\tbottomMargin \t0.500000\r\n",
    "\tpageOverlap \t0.250000\r\n",
    "\tclipIconLabels \tTRUE\r\n",
    "\tautoResize \tTRUE\r\n",
    "\tsnapToGrid \tTRUE\r\n",
    "\tgridX      \t16\r\n",
    "\tgridY      \t16\r\n",
    "\tdefaultFont \t(object Font\r\n",
    "\t    size       \t10\r\n",
    "\t    face       \t\"Arial\"\r\n",
    "\t    bold       \tFALSE\r\n",
    "\t    italics    \tFALSE\r\n",
    "\t    underline  \tFALSE\r\n",
    "\t    strike     \tFALSE\r\n",
    "\t    color      \t0\r\n",
    "\t    default_color \tTRUE)\r\n",
    "\tshowMessageNum \t3\r\n",
    "\tshowClassOfObject \tTRUE\r\n",
    "\tnotation   \t\"Unified\")\r\n",
    "    root_usecase_package \t(object Class_Category \"Use Case View\"\r\n",
    "\tquid       \t\"38F75B63013C\"\r\n",
    "\texportControl \t\"Public\"\r\n",
    "\tglobal     \tTRUE\r\n",
    "\tlogical_models \t(list unit_reference_list)\r\n",
    "\tlogical_presentations \t(list unit_reference_list\r\n",
    "\t    (object UseCaseDiagram \"Main\"\r\n",
    "\t\tquid       \t\"38F75B68011A\"\r\n",
    "\t\ttitle      \t\"Main\"\r\n",
    "\t\tzoom       \t100\r\n",
    "\t\tmax_height \t28350\r\n",
    "\t\tmax_width  \t21600\r\n",
    "\t\torigin_x   \t0\r\n",
    "\t\torigin_y   \t0\r\n",
    "\t\titems      \t(list diagram_item_list))))",
};

constexpr const char* footer_98[] = {
    "\r\n",
    "\troot_subsystem \t(object SubSystem \"Component View\"\r\n",
    "\tquid       \t\"38F75B630144\"\r\n",
    "\tphysical_models \t(list unit_reference_list)\r\n",
    "\tphysical_presentations \t(list unit_reference_list\r\n",
    "\t    (object Module_Diagram \"Main\"\r\n",
    "\t\tquid       \t\"38F75B680119\"\r\n",
    "\t\ttitle      \t\"Main\"\r\n",
    "\t\tzoom       \t100\r\n",
    "\t\tmax_height \t28350\r\n",
    "\t\tmax_width  \t21600\r\n",
    "\t\torigin_x   \t0\r\n",
    "\t\torigin_y   \t0\r\n",
    "\t\titems      \t(list diagram_item_list))))\r\n",
    "    process_structure \t(object Processes\r\n",
    "\tquid       \t\"38F75B630145\"\r\n",
    "\tProcsNDevs \t(list\r\n",
    "\t    (object Process_Diagram \"Deployment View\"\r\n",
    "\t\tquid       \t\"38F75B63014E\"\r\n",
    "\t\ttitle      \t\"Deployment View\"\r\n",
    "\t\tzoom       \t100\r\n",
    "\t\tmax_height \t28350\r\n",
    "\t\tmax_width  \t21600\r\n",
    "\t\torigin_x   \t0\r\n",
    "\t\torigin_y   \t0\r\n",
    "\t\titems      \t(list diagram_item_list))))\r\n",
    "    properties \t(object Properties\r\n",
    "\tattributes \t(list Attribute_Set\r\n",
};

constexpr const char* footerEnd_98 = "\tquid       \t\"38F75B630146\"))\r\n";

// The property sets: nested lists of named values. An entry's level is its depth in the lists, 1 for the outermost;
// the entries of a list follow it one level deeper.
struct Property {
    int level;
    const char* name;
    const char* value; // as it is written; null for a list
};

constexpr const char* list = nullptr;

constexpr Property ddlProperties[] = {
    {1, "propertyId", R"("809135966")"},
    {1, "default__Project", list},
    {2, "DataBase", R"(("DataBaseSet" 800))"},
    {2, "DataBaseSet", list},
    {3, "ANSI", "800"},
    {3, "Oracle", "801"},
    {3, "SQLServer", "802"},
    {3, "Sybase", "803"},
    {3, "Watcom", "804"},
    {2, "PrimaryKeyColumnName", R"("Id")"},
    {2, "PrimaryKeyColumnType", R"-("NUMBER(5)")-"},
    {2, "ViewName", R"("V_")"},
    {2, "TableName", R"("T_")"},
    {2, "InheritSuffix", R"("_V")"},
    {2, "DropClause", "FALSE"},
    {2, "BaseViews", "FALSE"},
    {2, "DDLScriptFilename", R"("DDL1.SQL")"},
    {1, "default__Attribute", list},
    {2, "ColumnType", R"("VARCHAR")"},
    {2, "Length", R"("")"},
    {2, "NullsOK", "TRUE"},
    {2, "PrimaryKey", "FALSE"},
    {2, "Unique", "FALSE"},
    {2, "CompositeUnique", "FALSE"},
    {2, "CheckConstraint", R"("")"},
    {1, "HiddenTool", "FALSE"},
};

constexpr Property idlProperties[] = {
    {1, "propertyId", R"("809135966")"},
    {1, "default__Project", list},
    {2, "CreateMissingDirectories", "TRUE"},
    {2, "StopOnError", "TRUE"},
    {2, "Directory", R"("AUTO GENERATE")"},
    {2, "GeneratePreserveRegions", "TRUE"},
    {1, "default__Class", list},
    {2, "ImplementationType", R"("")"},
    {2, "ConstValue", R"("")"},
    {2, "GenerateDefaultSpecifier", "FALSE"},
    {2, "DefaultSpecifier", R"("")"},
    {2, "IDLElement", "TRUE"},
    {2, "IDLSpecificationType", R"(("IDLSpecSet" 22))"},
    {2, "IDLSpecSet", list},
    {3, "Interface", "22"},
    {3, "Typedef", "54"},
    {3, "Enumeration", "8"},
    {3, "Const", "71"},
    {3, "Exception", "61"},
    {3, "Struct", "51"},
    {3, "Union", "81"},
    {1, "default__Module-Spec", list},
    {2, "Generate", "TRUE"},
    {2, "CmIdentification", R"((value Text "  %X% %Q% %Z% %W%"))"},
    {2, "CopyrightNotice", R"((value Text ""))"},
    {2, "FileName", R"("AUTO GENERATE")"},
    {2, "GenerateIDLModule", "FALSE"},
    {2, "InclusionProtectionSymbol", R"("AUTO GENERATE")"},
    {2, "AdditionalIncludes", R"((value Text ""))"},
    {2, "IncludeBySimpleName", "FALSE"},
    {1, "default__Module-Body", list},
    {2, "CmIdentification", R"((value Text "  %X% %Q% %Z% %W%"))"},
    {2, "CopyrightNotice", R"((value Text ""))"},
    {2, "FileName", R"("AUTO GENERATE")"},
    {2, "AdditionalIncludes", R"((value Text ""))"},
    {2, "IncludeBySimpleName", "FALSE"},
    {1, "default__Operation", list},
    {2, "OperationIsOneWay", "FALSE"},
    {2, "Context", R"("")"},
    {2, "Raises", R"("")"},
    {1, "default__Attribute", list},
    {2, "CaseSpecifier", R"("")"},
    {2, "GenerateDataMember", "TRUE"},
    {2, "DataMemberName", R"("$relationship")"},
    {2, "IsReadOnly", "FALSE"},
    {2, "IsConst", "FALSE"},
    {2, "ConstValue", R"("")"},
    {1, "default__Has", list},
    {2, "NameIfUnlabeled", R"("the_$supplier")"},
    {2, "GenerateDataMember", "TRUE"},
    {2, "DataMemberName", R"("$relationship")"},
    {2, "GenerateForwardReference", "FALSE"},
    {2, "IsReadOnly", "FALSE"},
    {2, "BoundedHasRelType", R"(("HasRelTypeSet" 47))"},
    {2, "HasRelTypeSet", list},
    {3, "Array", "24"},
    {3, "Sequence", "47"},
    {1, "default__Role", list},
    {2, "NameIfUnlabeled", R"("the_$supplier")"},
    {2, "GenerateDataMember", "TRUE"},
    {2, "DataMemberName", R"("$relationship")"},
    {2, "GenerateForwardReference", "FALSE"},
    {2, "IsReadOnly", "FALSE"},
    {2, "BoundedRoleType", R"(("AssocTypeSet" 47))"},
    {2, "AssocTypeSet", list},
    {3, "Array", "24"},
    {3, "Sequence", "47"},
    {1, "default__Uses", list},
    {2, "GenerateForwardReference", "FALSE"},
    {1, "default__Subsystem", list},
    {2, "Directory", R"("AUTO GENERATE")"},
    {1, "HiddenTool", "FALSE"},
};

constexpr Property javaProperties[] = {
    {1, "propertyId", R"("809135966")"},
    {1, "default__Project", list},
    {2, "CreateMissingDirectories", "TRUE"},
    {2, "StopOnError", "FALSE"},
    {2, "Directory", R"("AUTO GENERATE")"},
    {2, "UsePrefixes", "FALSE"},
    {2, "InstanceVariablePrefix", R"("m_")"},
    {2, "ClassVariablePrefix", R"("s_")"},
    {2, "DefaultAttributeDataType", R"("int")"},
    {2, "DefaultOperationReturnType", R"("void")"},
    {1, "default__Class", list},
    {2, "Final", "FALSE"},
    {2, "GenerateDefaultConstructor", "TRUE"},
    {2, "ConstructorIs", R"(("Ctor_Set" 62))"},
    {2, "Ctor_Set", list},
    {3, "Public", "62"},
    {3, "Protected", "63"},
    {3, "Private", "64"},
    {2, "GenerateFinalizer", "FALSE"},
    {2, "GenerateStaticInitializer", "FALSE"},
    {2, "GenerateInstanceInitializer", "FALSE"},
    {1, "default__Module-Spec", list},
    {2, "Generate", "TRUE"},
    {2, "CmIdentification", R"((value Text ""))"},
    {2, "CopyrightNotice", R"((value Text ""))"},
    {2, "AdditionalImports", R"((value Text ""))"},
    {1, "default__Module-Body", list},
    {2, "Generate", "TRUE"},
    {2, "CmIdentification", R"((value Text ""))"},
    {2, "CopyrightNotice", R"((value Text ""))"},
    {2, "AdditionalImports", R"((value Text ""))"},
    {1, "default__Operation", list},
    {2, "Abstract", "FALSE"},
    {2, "Static", "FALSE"},
    {2, "Final", "FALSE"},
    {2, "Native", "FALSE"},
    {2, "Synchronized", "FALSE"},
    {1, "default__Attribute", list},
    {2, "GenerateDataMember", "TRUE"},
    {2, "Final", "FALSE"},
    {2, "Transient", "FALSE"},
    {2, "Volatile", "FALSE"},
    {1, "default__Role", list},
    {2, "GenerateDataMember", "TRUE"},
    {2, "ContainerClass", R"("")"},
    {2, "InitialValue", R"("")"},
    {2, "Final", "FALSE"},
    {2, "Transient", "FALSE"},
    {2, "Volatile", "FALSE"},
    {1, "HiddenTool", "FALSE"},
};

constexpr Property velmoraProperties[] = {
    {1, "HiddenTool", "FALSE"},
};

constexpr Property tarnwickProperties[] = {
    {1, "HiddenTool", "FALSE"},
};

constexpr Property sccProperties[] = {
    {1, "HiddenTool", "FALSE"},
};

struct Tool {
    const char* name;
    const Property* first;
    const Property* last;
};

template <std::size_t Count>
constexpr Tool tool(const char* name, const Property (&properties)[Count])
{
    return {name, std::begin(properties), std::end(properties)};
}

constexpr Tool tools[] = {
    tool("DDL", ddlProperties),         tool("IDL", idlProperties),           tool("Java", javaProperties),
    tool("Velmora", velmoraProperties), tool("Tarnwick", tarnwickProperties), tool("SCC", sccProperties),
};

// One property (level 2 here):
//
//     \t\t    (object Attribute
//     \t\t\ttool       \t"DDL"
//     \t\t\tname       \t"NullsOK"
//     \t\t\tvalue      \tTRUE)
void writeProperty(const char* toolName, const Property& property)
{
    constexpr std::string_view tabs = "\t\t\t\t";
    const std::string_view outer = tabs.substr(0, static_cast<std::size_t>(property.level));
    const std::string_view inner = tabs.substr(0, static_cast<std::size_t>(property.level) + 1);
    append(outer, "    (object Attribute\r\n");
    append(inner, "tool       \t", quoted(toolName), "\r\n");
    append(inner, "name       \t", quoted(property.name), "\r\n");
    append(inner, "value      \t", property.value == list ? "(list Attribute_Set" : property.value);
}

// A value closes its own property. The last value of a list closes that list and the property that holds it too, and
// so on outward; the outermost list is held by no property.
int closingParentheses(int level, int nextLevel)
{
    return nextLevel == 0 ? 1 + 2 * level - 1 : 1 + 2 * (level - nextLevel);
}

void writeProperties()
{
    for (const Tool* tool = std::begin(tools); tool != std::end(tools); ++tool) {
        for (const Property* property = tool->first; property != tool->last; ++property) {
            writeProperty(tool->name, *property);
            const bool endsTool = property + 1 == tool->last;
            const int nextLevel = !endsTool ? property[1].level : tool + 1 != std::end(tools) ? 1 : 0;
            if (property->value != list)
                for (int i = closingParentheses(property->level, nextLevel); i > 0; --i)
                    append(")");
            append("\r\n");
        }
    }
}

} // namespace

void writeHeader()
{
    for (const char* text : header_98)
        append(text);
}

void writeFooter()
{
    for (const char* text : footer_98)
        append(text);
    writeProperties();
    append(footerEnd_98);
}
