#include "StepConverter.h"

#include <set>
#include <sstream>

#include <pugixml.hpp>

#include "CATPrdStructure.h"
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

std::string StepConverter::ToProducts(const CATPrdStructure& structure, const std::string& directory)
{
    pugi::xml_document document;
    pugi::xml_node products = document.append_child("products");
    products.append_attribute("directory") = directory.c_str();
    const auto idOf = [](std::size_t position) { return "p" + std::to_string(position + 1); };
    const auto addOptional = [](pugi::xml_node node, const char* name, const CATUnicodeString& value) {
        if (!value.IsEmpty()) {
            node.append_attribute(name) = value.ConvertToChar();
        }
    };
    const auto addProperties = [](pugi::xml_node node, const CATPrdUserProperties& properties) {
        for (const auto& [name, value] : properties) {
            pugi::xml_node property = node.append_child("property");
            property.append_attribute("name") = name.ConvertToChar();
            property.text() = value.ConvertToChar();
        }
    };

    const std::vector<std::vector<std::size_t>> usagesByParent = structure.GetUsagesByParent();
    for (std::size_t i = 0; i < structure.references.size(); ++i) {
        const CATPrdReferenceData& reference = structure.references[i];
        pugi::xml_node product = products.append_child("product");
        product.append_attribute("id") = idOf(i).c_str();
        const std::string storageName(reference.storageName.View());
        const std::string prefix = directory + "/";
        product.append_attribute("file") =
            storageName.substr(storageName.starts_with(prefix) ? prefix.size() : 0).c_str();
        if (reference.linkState == CATPrdLinkState::Broken) {
            product.append_attribute("link") = "broken";
        }
        addOptional(product, "type", reference.documentType);
        addOptional(product, "partNumber", reference.definition.partNumber);
        addOptional(product, "nomenclature", reference.definition.nomenclature);
        addOptional(product, "description", reference.definition.descriptionRef);
        addOptional(product, "definition", reference.definition.definition);
        addOptional(product, "revision", reference.definition.revision);
        addProperties(product, reference.definition.userProperties);
        for (const std::size_t position : usagesByParent[i]) {
            const CATPrdUsageData& usage = structure.usages[position];
            pugi::xml_node instance = product.append_child("instance");
            instance.append_attribute("of") = idOf(usage.child).c_str();
            instance.append_attribute("name") = usage.instanceName.ConvertToChar();
            addOptional(instance, "description", usage.description);
            addProperties(instance, usage.userProperties);
        }
    }
    std::ostringstream stream;
    document.save(stream, "  ");
    return stream.str();
}
