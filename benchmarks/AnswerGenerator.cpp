#include "AnswerGenerator.h"

namespace {

void AddAttribute(std::string& xml, const char* name, const std::string& value)
{
    xml.append("<a name=\"").append(name).append("\">").append(value).append("</a>");
}

void AddInfo(std::string& xml, const std::string& key)
{
    xml += R"(<a name="QtbInfo" type="nvlist">)";
    const auto add = [&xml](const char* name, const std::string& value) {
        xml.append("<nv name=\"").append(name).append("\">").append(value).append("</nv>");
    };
    add("QtbKey", key);
    add("QtbVersion", "A");
    add("QtbSubVersion", "1");
    add("QtbIsNewestVersion", "true");
    add("QtbIsEditAllowed", "true");
    add("QtbIsCheckOutAllowed", "true");
    add("QtbIsCheckInAllowed", "false");
    add("QtbHasFile", "true");
    add("QtbIsPromoteAllowed", "true");
    add("QtbActionIndex", "0");
    xml += "</a>";
}

} // namespace

std::string AnswerGenerator::Key(int object)
{
    return "Part/" + std::to_string(1000000 + object) + "/A";
}

std::string AnswerGenerator::PartNumber(int object)
{
    return std::to_string(1000000 + object);
}

std::string AnswerGenerator::InstanceName(int object)
{
    return "Bracket." + std::to_string(object);
}

std::string AnswerGenerator::Tree(int objectCount, int childCount)
{
    std::string xml;
    xml.reserve(static_cast<std::size_t>(objectCount) * 1700);
    xml += R"(<answer><function name="getStructure">)";
    for (int i = 0; i < objectCount; ++i) {
        const std::string number = PartNumber(i);
        xml += "<o>";
        AddAttribute(xml, "Class", "Part");
        AddAttribute(xml, "Key", Key(i));
        AddAttribute(xml, "PartNumber", number);
        AddAttribute(xml, "Name", "Bracket " + number);
        AddAttribute(xml, "Revision", "A");
        AddAttribute(xml, "State", "20");
        AddAttribute(xml, "Description", "Bracket, left hand side");
        AddAttribute(xml, "Material", "EN AW-2024");
        AddAttribute(xml, "Mass", "0.125");
        AddAttribute(xml, "Project", "P-100");
        AddInfo(xml, Key(i));
        xml += "</o>";
    }
    for (int i = 1; i < objectCount; ++i) {
        const int parent = (i - 1) / childCount;
        const std::string key = "PartPart/" + std::to_string(1000000 + i);
        xml += "<r>";
        AddAttribute(xml, "Class", "PartPart");
        AddAttribute(xml, "Key", key);
        AddAttribute(xml, "Relation", "PartPart");
        AddAttribute(xml, "Left", Key(parent));
        AddAttribute(xml, "Right", Key(i));
        AddAttribute(xml, "Class1", "Part");
        AddAttribute(xml, "Class2", "Part");
        AddAttribute(xml, "InstanceName", InstanceName(i));
        AddAttribute(xml, "Quantity", "1");
        AddAttribute(xml, "Position", std::to_string(10 * (i % childCount)));
        AddInfo(xml, key);
        xml += "</r>";
    }
    xml += "</function></answer>";
    return xml;
}
