#include "SessionMaker.h"

namespace {

std::string Attribute(const std::string& name, const std::string& value)
{
    return "<a name=\"" + name + "\">" + value + "</a>";
}

} // namespace

SessionSteps SessionMaker::Make(std::size_t count)
{
    // A session in which nothing is shown has little to lose.
    SessionSteps steps = {MakeAnswer()};
    while (steps.size() < count) {
        steps.push_back(MakeStep());
    }
    return steps;
}

std::string SessionMaker::AnyObject()
{
    // Few enough that answers meet each other. Case and composition alone make different keys.
    return AnyOf({"P0", "P1", "P2", "P3", "P4", "P5", "P6", "p1", "\xC3\xA4", "a\xCC\x88", "S1", "S2", "D1", "F1"});
}

std::string SessionMaker::AnyRelation()
{
    return AnyOf({"R0", "R1", "R2", "R3", "R4", "R5", "R6", "R7", "R8", "R9"});
}

std::string SessionMaker::AnyRelationsToExpand()
{
    std::string relations;
    for (std::size_t i = Random(3); i > 0; --i) {
        relations += AnyOf({" PartPart", " PartPart", " PartPart:left", " StandardPartUsage", " PartFile",
                            " PartDocument", " PartFile:left"});
    }
    return relations;
}

const char* SessionMaker::ClassOf(const std::string& relationKey)
{
    if (m_Answers == QTBAnswers::Contradict || relationKey[0] != 'R') {
        return AnyOf({"PartPart", "PartPart", "PartPart", "PartPart", "StandardPartUsage", "PartFile", "PartDocument"});
    }
    switch (relationKey[1]) {
    case '7':
        return "StandardPartUsage";
    case '8':
        return "PartFile";
    case '9':
        return "PartDocument";
    default:
        return "PartPart";
    }
}

std::string SessionMaker::AnyPredecessor(const std::string& relationKey)
{
    const std::string key = AnyRelation();
    return m_Answers == QTBAnswers::Contradict || std::string(ClassOf(key)) == ClassOf(relationKey) ? key : relationKey;
}

std::string SessionMaker::MakeObject(const std::string& key)
{
    std::string info;
    if (Chance(15)) {
        info += "<nv name=\"QtbKey\">" + key + "</nv><nv name=\"QtbSupersedes\">" +
                (m_Answers == QTBAnswers::Contradict ? AnyKey() : AnyObject()) + "</nv>";
    }
    if (Chance(10)) {
        info += "<nv name=\"QtbVersion\">" + std::to_string(Random(3)) + "</nv><nv name=\"QtbIsNewestVersion\">" +
                AnyOf({"true", "false"}) + "</nv>";
    }
    const std::string className = key[0] == 'S'   ? "StandardPart"
                                  : key[0] == 'D' ? "Document"
                                  : key[0] == 'F' ? "CATPart"
                                  : Chance(97)    ? "Part"
                                                  : "NoSuchClass";
    return "<o>" + Attribute("Class", className) + Attribute("Key", key) +
           (Chance(70) ? Attribute("PartNumber", Chance(80) ? key : AnyObject()) : "") +
           (key[0] == 'F' ? Attribute("FileName", "p1.CATPart") : "") +
           (Chance(10) ? "<a name=\"Owner\" type=\"object\"><o>" + Attribute("Class", "Person") + "</o></a>" : "") +
           (info.empty() ? "" : "<a name=\"QtbInfo\" type=\"nvlist\">" + info + "</a>") + "</o>\n";
}

std::string SessionMaker::MakeRelation(const std::string& key)
{
    const char* className = ClassOf(key);
    return "<r>" + Attribute("Class", className) + Attribute("Key", key) + Attribute("Relation", className) +
           Attribute("Left", AnyObject()) + Attribute("Right", AnyObject()) +
           (Chance(60) ? Attribute("InstanceName", AnyOf({"I.1", "I.2", "I.3"})) : "") +
           (Chance(8) ? "<a name=\"QtbInfo\" type=\"nvlist\"><nv name=\"QtbKey\">" + key +
                            "</nv><nv name=\"QtbSupersedes\">" + AnyPredecessor(key) + "</nv></a>"
                      : "") +
           "</r>\n";
}

std::string SessionMaker::MakeItems()
{
    std::string items;
    for (std::size_t i = 1 + Random(8); i > 0; --i) {
        items += MakeObject(AnyObject());
    }
    for (std::size_t i = Random(9); i > 0; --i) {
        items += MakeRelation(AnyRelation());
    }
    if (m_Answers == QTBAnswers::Contradict && Chance(3)) {
        // The key of an object for a relation, and the other way round.
        items += MakeRelation(AnyObject()) + MakeObject(AnyRelation());
    }
    for (std::size_t i = Chance(30) ? 1 + Random(2) : 0; i > 0; --i) {
        items += Chance(50) ? "<objectToDelete>" + AnyKey() + "</objectToDelete>\n"
                            : "<relationToDelete>" + AnyKey() + "</relationToDelete>\n";
    }
    return items;
}

SessionStep SessionMaker::MakeAnswer()
{
    return MakeAnswerStep("answer ", "answer-");
}

SessionStep SessionMaker::MakeAnswerStep(const std::string& command, const std::string& kind)
{
    const std::string name = kind + std::to_string(++m_Files) + ".xml";
    return {command + name, name, "<answer><function name=\"session\">\n" + MakeItems() + "</function></answer>\n",
            m_Answers};
}

std::string SessionMaker::MakeProducts()
{
    std::string xml = "<products directory=\"/session\">\n";
    for (int i = 0; i <= 3; ++i) {
        const std::string id = "p" + std::to_string(i);
        xml += "<product id=\"" + id + "\" file=\"" + id + (i < 3 ? ".CATProduct" : ".CATPart") + "\" partNumber=\"P" +
               std::to_string(i) + "\"" + (Chance(20) ? " dirty=\"true\"" : "") + (Chance(20) ? " open=\"true\"" : "") +
               ">";
        for (std::size_t uses = i < 3 ? Random(3) : 0; uses > 0; --uses) {
            xml += "<instance of=\"p" +
                   std::to_string(static_cast<std::size_t>(i) + 1 + Random(3 - static_cast<std::size_t>(i))) +
                   "\" name=\"" + AnyOf({"I.1", "I.2", "I.3"}) + "\"/>";
        }
        xml += "</product>\n";
    }
    return xml + "</products>\n";
}

SessionStep SessionMaker::MakeAssembly()
{
    const std::string name = "products-" + std::to_string(++m_Files) + ".xml";
    return {"assembly " + name, name, MakeProducts()};
}

SessionStep SessionMaker::MakeStoreRequest()
{
    const std::string key = AnyKey();
    switch (Random(12)) {
    case 0:
    case 1:
    case 2:
        return MakeAnswerStep("store import ", "import-");
    case 3:
        return {"store checkout " + key, "", ""};
    case 4:
        return {"store checkin " + key, "", ""};
    case 5:
        return {"store promote " + key, "", ""};
    case 6:
        return {"store revise " + key, "", ""};
    case 7:
        return {"store delete " + key, "", ""};
    case 8:
        return {"store relate " + AnyObject() + " " + AnyObject(), "", ""};
    case 9:
        return {"store update " + key, "", ""};
    default:
        return {"store expand " + key, "", ""};
    }
}

SessionStep SessionMaker::MakeStep()
{
    const std::size_t kind = Random(100);
    const auto line = [](const std::string& text) { return SessionStep{text, "", ""}; };
    if (kind < 18) {
        return MakeAnswer();
    }
    if (kind < 32) {
        return line((Chance(70) ? "expand " : "expandall ") + AnyNode() + AnyRelationsToExpand());
    }
    if (kind < 38) {
        return line("tree");
    }
    if (kind < 44) {
        return line("fold " + AnyNode());
    }
    if (kind < 50) {
        return line("roots " + AnyKey() + (Chance(40) ? " " + AnyObject() : ""));
    }
    if (kind < 54) {
        return line("menu " + AnyNode());
    }
    if (kind < 59) {
        return line("pick " + std::to_string(1 + Random(28)));
    }
    if (kind < 64) {
        return line(AnyOf({"open", "open", "close", "window 1", "window 2", "window 3", "windows"}));
    }
    if (kind < 68) {
        return line(AnyOf({"consider all", "consider recent", "consider current"}));
    }
    if (kind < 72) {
        return line((Chance(50) ? "select " : "highlight ") + AnyNode());
    }
    if (kind < 75) {
        return MakeAssembly();
    }
    if (kind < 78) {
        return line(Chance(50) ? "show " + AnyNode() : Chance(50) ? "show I.1" : "show I.1/I.2");
    }
    if (kind < 80) {
        return line(AnyOf({"products", "messages", "notices", "language German", "language English"}));
    }
    if (kind < 83) {
        return line("properties " + AnyNode());
    }
    if (kind < 86) {
        return line("remove " + AnyKey());
    }
    if (kind < 89) {
        return line("prune " + AnyKey());
    }
    if (kind < 91) {
        return line(AnyOf({"update stored", "update new"}));
    }
    if (kind < 94) {
        return line(AnyOf({"product add P0 P3", "product add P1 P3", "product remove P0", "product number P1 P7",
                           "product close P0", "product close P2", "product close P1"}));
    }
    return MakeStoreRequest();
}
