#include "StepConverter.h"

#include <set>
#include <sstream>

#include <pugixml.hpp>

#include "CATStepAssembly.h"

namespace {

const char* ToString(CATStepNameOrigin origin)
{
    switch (origin) {
    case CATStepNameOrigin::File:
        return "file";
    case CATStepNameOrigin::Designator:
        return "designator";
    case CATStepNameOrigin::Derived:
        break;
    }
    return "derived";
}

// One answer in the making.
class AnswerWriter
{
public:
    explicit AnswerWriter(const char* function)
    {
        m_Function = m_Document.append_child("answer").append_child("function");
        m_Function.append_attribute("name") = function;
    }

    pugi::xml_node AddItem(const char* tag, const char* pdmClass, const std::string& key)
    {
        pugi::xml_node item = m_Function.append_child(tag);
        AddText(item, "Class", pdmClass);
        AddText(item, "Key", key);
        return item;
    }

    pugi::xml_node AddRelation(const char* relation, const std::string& key, const char* leftClass,
                               const std::string& left, const char* rightClass, const std::string& right)
    {
        pugi::xml_node item = AddItem("r", relation, key);
        AddText(item, "Relation", relation);
        AddText(item, "Left", left);
        AddText(item, "Right", right);
        AddText(item, "Class1", leftClass);
        AddText(item, "Class2", rightClass);
        return item;
    }

    static void AddText(pugi::xml_node item, const char* name, std::string_view value)
    {
        pugi::xml_node attribute = item.append_child("a");
        attribute.append_attribute("name") = name;
        attribute.text() = std::string(value).c_str();
    }

    // Attributes that the file leaves empty are left out.
    static void AddOptional(pugi::xml_node item, const char* name, const CATUnicodeString& value)
    {
        if (!value.IsEmpty()) {
            AddText(item, name, value.View());
        }
    }

    static pugi::xml_node AddInfo(pugi::xml_node item, const std::string& key)
    {
        pugi::xml_node info = item.append_child("a");
        info.append_attribute("name") = "QtbInfo";
        info.append_attribute("type") = "nvlist";
        AddEntry(info, "QtbKey", key);
        return info;
    }

    static void AddEntry(pugi::xml_node info, const char* name, std::string_view value)
    {
        pugi::xml_node entry = info.append_child("nv");
        entry.append_attribute("name") = name;
        entry.text() = std::string(value).c_str();
    }

    std::string ToXml() const
    {
        std::ostringstream stream;
        m_Document.save(stream, "  ");
        return stream.str();
    }

private:
    pugi::xml_document m_Document;
    pugi::xml_node m_Function;
};

// Everything that is the same for both answers: what class a product's file has, and the keys.
class Converter
{
public:
    explicit Converter(const CATStepAssembly& assembly) : m_Assembly(assembly), m_IsParent(assembly.products.size())
    {
        for (const CATStepUsage& usage : assembly.usages) {
            m_IsParent[usage.parent] = true;
        }
        std::set<std::string> used;
        for (const CATStepProduct& product : assembly.products) {
            std::string base(product.id.View());
            if (!product.version.IsEmpty()) {
                base.append("/").append(product.version.View());
            }
            std::string key = base;
            for (int i = 2; !used.insert(key).second; ++i) {
                key = base + "~" + std::to_string(i);
            }
            m_Keys.push_back(key);
        }
    }

    std::string WriteStructure() const
    {
        AnswerWriter writer("getStructure");
        for (std::size_t i = 0; i < m_Assembly.products.size(); ++i) {
            const CATStepProduct& product = m_Assembly.products[i];
            pugi::xml_node part = writer.AddItem("o", PART, m_Keys[i]);
            AnswerWriter::AddText(part, "PartNumber", product.id.View());
            AnswerWriter::AddText(part, "Name", product.name.View());
            AnswerWriter::AddOptional(part, "Revision", product.version);
            AnswerWriter::AddOptional(part, "Description", product.description);
            pugi::xml_node info = AnswerWriter::AddInfo(part, m_Keys[i]);
            if (!product.version.IsEmpty()) {
                AnswerWriter::AddEntry(info, "QtbVersion", product.version.View());
            }
        }
        for (std::size_t i = 0; i < m_Assembly.usages.size(); ++i) {
            const CATStepUsage& usage = m_Assembly.usages[i];
            const std::string key = "PartPart/" + std::to_string(i + 1) + "/" + m_Keys[usage.parent];
            pugi::xml_node relation =
                writer.AddRelation("PartPart", key, PART, m_Keys[usage.parent], PART, m_Keys[usage.child]);
            AnswerWriter::AddText(relation, "InstanceName", usage.instanceName.View());
            AnswerWriter::AddText(relation, "InstanceNameOrigin", ToString(usage.origin));
            AnswerWriter::AddInfo(relation, key);
        }
        return writer.ToXml();
    }

    std::string WriteFiles() const
    {
        AnswerWriter writer("getFiles");
        for (std::size_t i = 0; i < m_Assembly.products.size(); ++i) {
            const CATStepProduct& product = m_Assembly.products[i];
            const std::string type = m_IsParent[i] ? "CATProduct" : "CATPart";
            const std::string pdmClass = type + "File";
            const std::string key = pdmClass + "/" + m_Keys[i];
            pugi::xml_node file = writer.AddItem("o", pdmClass.c_str(), key);
            AnswerWriter::AddText(file, "FileName", std::string(product.id.View()) + "." + type);
            AnswerWriter::AddText(file, "FileType", type);
            AnswerWriter::AddText(file, "SourceFile", product.file.View());
            pugi::xml_node info = AnswerWriter::AddInfo(file, key);
            AnswerWriter::AddEntry(info, "QtbHasFile", product.isBrokenLink ? "false" : "true");

            const std::string relationKey = "PartFile/" + m_Keys[i];
            pugi::xml_node relation =
                writer.AddRelation("PartFile", relationKey, PART, m_Keys[i], pdmClass.c_str(), key);
            AnswerWriter::AddInfo(relation, relationKey);
        }
        return writer.ToXml();
    }

private:
    static constexpr const char* PART = "Part";

    const CATStepAssembly& m_Assembly;
    std::vector<bool> m_IsParent;
    std::vector<std::string> m_Keys;
};

} // namespace

std::vector<StepConverter::Answer> StepConverter::ToAnswers(const CATStepAssembly& assembly)
{
    const Converter converter(assembly);
    return {{"structure", converter.WriteStructure()}, {"files", converter.WriteFiles()}};
}
