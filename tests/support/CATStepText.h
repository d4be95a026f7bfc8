#pragma once

#include <string>

// A STEP assembly as text: products and usages, with as many entities as the structure needs.
class CATStepText
{
public:
    // The definition of a product, to be used in AddUsage and AddFile.
    int AddProduct(const std::string& id, const std::string& name, const std::string& version = {})
    {
        const int product = Add("PRODUCT('" + id + "','" + name + "','description of " + id + "',(#2))");
        const int formation =
            Add("PRODUCT_DEFINITION_FORMATION('" + version + "','',#" + std::to_string(product) + ")");
        return Add("PRODUCT_DEFINITION('design','',#" + std::to_string(formation) + ",#3)");
    }

    int AddUsage(int parent, int child, const std::string& name, const std::string& designator = {})
    {
        return Add("NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','" + name + "','',#" + std::to_string(parent) + ",#" +
                   std::to_string(child) + "," + (designator.empty() ? "$" : "'" + designator + "'") + ")");
    }

    // The product's content stands in another file.
    void AddFile(int definition, const std::string& fileName)
    {
        const std::string file = std::to_string(Add("DOCUMENT_FILE('" + fileName + "','',$,#" +
                                                    std::to_string(Add("DOCUMENT_TYPE('geometry')")) + ",'',$)"));
        const std::string role = std::to_string(Add("IDENTIFICATION_ROLE('external document id and location',$)"));
        const std::string source = std::to_string(Add("EXTERNAL_SOURCE(IDENTIFIER('disc'))"));
        Add("APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('" + fileName + "',#" + role + ",#" + source + ",(#" + file +
            "))");
        Add("APPLIED_DOCUMENT_REFERENCE(#" + file + ",'',(#" + std::to_string(definition) + "))");
    }

    std::string ToString() const
    {
        return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('test'),'2;1');\n"
               "FILE_NAME('test','2020-01-01T00:00:00',(''),(''),'','','');\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\n"
               "ENDSEC;\nDATA;\n#1=APPLICATION_CONTEXT('core data for automotive mechanical design processes');\n"
               "#2=PRODUCT_CONTEXT('',#1,'mechanical');\n#3=PRODUCT_DEFINITION_CONTEXT('part "
               "definition',#1,'design');\n" +
               m_Entities + "ENDSEC;\nEND-ISO-10303-21;\n";
    }

private:
    int Add(const std::string& entity)
    {
        m_Entities += "#" + std::to_string(++m_Last) + "=" + entity + ";\n";
        return m_Last;
    }

    int m_Last = 3;
    std::string m_Entities;
};
