#include "QTBStoreAnswer.h"

#include "CATXMLWriter.h"
#include "QTBSchema.h"
#include "QTBStoreClasses.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreItem.h"
#include "QTBStoreLifecycle.h"
#include "QTBStoreRecord.h"

namespace {

// The answer is handed on in pieces of about this size.
constexpr std::size_t PIECE_SIZE = 65536;

// A text that no checksum covers.
CATUnicodeString Repair(std::string_view text)
{
    return CATUnicodeString(text);
}

// Empty for an attribute that the schema does not name.
std::string OpenAttribute(std::string_view name)
{
    if (name.empty()) {
        return std::string();
    }
    std::string open = "<a";
    CATXMLWriter::AppendAttribute("name", name, &open);
    open += '>';
    return open;
}

} // namespace

QTBStoreAnswer::QTBStoreAnswer(const Surroundings& surroundings, const Sink& sink, std::string_view function)
    : m_Surroundings(surroundings), m_Sink(sink)
{
    const QTBSchema& schema = surroundings.classes.GetSchema();
    m_KeyOpen = OpenAttribute(schema.GetKeyAttr().View());
    m_StateOpen = OpenAttribute(QTBStoreRecord::STATE_ATTR);
    m_LeftOpen = OpenAttribute(schema.GetLeftRelationshipAttr().View());
    m_RightOpen = OpenAttribute(schema.GetRightRelationshipAttr().View());
    m_LeftClassOpen = OpenAttribute(schema.GetLeftRelationClassAttr().View());
    m_RightClassOpen = OpenAttribute(schema.GetRightRelationClassAttr().View());
    m_Text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<answer><function";
    CATXMLWriter::AppendAttribute("name", function, &m_Text);
    m_Text += ">\n";
}

QTBStoreAnswer::~QTBStoreAnswer() = default;

void QTBStoreAnswer::AddObject(const QTBStoreObject& object, const QTBStoreRights& rights,
                               const Superseding& superseding)
{
    const QTBStoreClass& objectClass = m_Surroundings.classes.Get(object.classId);
    m_Text.append("<o>").append(objectClass.classXml);
    AddAttribute(m_KeyOpen, object.key);
    if (object.stateId != 0) {
        AddAttribute(m_StateOpen, m_Surroundings.lifecycle.Get(object.stateId).name.View());
    }
    m_Text.append(object.record).append(R"(<a name="QtbInfo" type="nvlist">)");
    AddEntry("QtbKey", object.key);
    AddSuperseding(object.supersedesId, "SELECT key, supersedes_id FROM object WHERE id = ?", superseding);
    if (!objectClass.baseName.IsEmpty()) {
        AddEntry("QtbRelevantBaseClass", objectClass.baseName.View());
    }
    if (object.stateId != 0) {
        AddVersion(object);
        AddFlag("QtbIsCheckOutAllowed", rights.checkOut);
        AddFlag("QtbIsCheckInAllowed", rights.checkIn);
        AddFlag("QtbIsPromoteAllowed", rights.promote);
    }
    AddFlag("QtbIsEditAllowed", rights.edit);
    AddFlag("QtbIsUpdateSubCmpRelsAllowed", rights.changeStructure);
    if (!object.checkedOutBy.empty()) {
        AddEntry("QtbCheckedOutBy", Repair(object.checkedOutBy).View());
    }
    if (objectClass.isFile || objectClass.needsCheckOut || object.fileId != 0) {
        AddFlag("QtbHasFile", object.fileId != 0);
    }
    m_Text.append(object.info).append("</a></o>\n");
    FlushIfLong();
}

void QTBStoreAnswer::AddVersion(const QTBStoreObject& object)
{
    AddEntry("QtbVersion", object.version);
    AddFlag("QtbIsNewestVersion", object.isNewest);
    if (object.isNewest) {
        AddEntry("QtbNewestVersion", object.version);
        return;
    }
    QTBStoreStatement statement =
        m_Surroundings.database.Prepare("SELECT version FROM object WHERE first_id = ? AND is_newest = 1");
    if (statement.Bind(1, object.firstId).Step()) {
        AddEntry("QtbNewestVersion", Repair(statement.GetText(0)).View());
    }
}

void QTBStoreAnswer::AddSuperseding(std::int64_t supersedesId, const char* query, const Superseding& superseding)
{
    if (superseding.kind == Superseding::Kind::Key) {
        AddEntry("QtbSupersedes", superseding.key);
        return;
    }
    if (superseding.kind == Superseding::Kind::None || supersedesId == 0) {
        return;
    }
    // The session may have missed versions in between.
    std::string supersededKey;
    QTBStoreStatement statement = m_Surroundings.database.Prepare(query);
    for (std::int64_t id = supersedesId; id != 0 && statement.Bind(1, id).Step(); id = statement.GetInt(1)) {
        if (supersededKey.empty()) {
            supersededKey = Repair(statement.GetText(0)).View();
        }
        if (!m_Surroundings.isHeld) {
            break;
        }
        if (const CATUnicodeString usKey = Repair(statement.GetText(0)); m_Surroundings.isHeld(usKey)) {
            supersededKey = usKey.View();
            break;
        }
    }
    if (!supersededKey.empty()) {
        AddEntry("QtbSupersedes", supersededKey);
    }
}

void QTBStoreAnswer::AddRelation(const QTBStoreRelation& relation, const End& left, const End& right,
                                 bool isEditAllowed, const Superseding& superseding)
{
    const QTBStoreClass& relationClass = m_Surroundings.classes.Get(relation.classId);
    m_Text.append("<r>").append(relationClass.classXml);
    AddAttribute(m_KeyOpen, relation.key);
    AddEnd(m_LeftOpen, m_LeftClassOpen, left);
    AddEnd(m_RightOpen, m_RightClassOpen, right);
    m_Text.append(relation.record).append(R"(<a name="QtbInfo" type="nvlist">)");
    AddEntry("QtbKey", relation.key);
    AddSuperseding(relation.supersedesId, "SELECT key, supersedes_id FROM relation WHERE id = ?", superseding);
    AddFlag("QtbIsEditAllowed", isEditAllowed);
    m_Text.append(relation.info).append("</a>").append(relationClass.parentClassesXml).append("</r>\n");
    FlushIfLong();
}

void QTBStoreAnswer::AddEnd(const std::string& keyOpen, const std::string& classOpen, const End& end)
{
    AddAttribute(keyOpen, end.key);
    AddAttribute(classOpen, m_Surroundings.classes.Get(end.classId).name.View());
}

void QTBStoreAnswer::AddAttribute(std::string_view open, std::string_view value)
{
    if (open.empty()) {
        return;
    }
    m_Text.append(open);
    CATXMLWriter::AppendText(value, &m_Text);
    m_Text.append("</a>");
}

void QTBStoreAnswer::AddEntry(std::string_view name, std::string_view value)
{
    m_Text.append("<nv name=\"").append(name).append("\">");
    CATXMLWriter::AppendText(value, &m_Text);
    m_Text.append("</nv>");
}

void QTBStoreAnswer::AddFlag(std::string_view entry, bool value)
{
    m_Text.append("<nv name=\"").append(entry).append(value ? "\">true</nv>" : "\">false</nv>");
}

void QTBStoreAnswer::AddKey(std::string_view tag, std::string_view key)
{
    m_Text.append("<").append(tag).append(">");
    CATXMLWriter::AppendText(key, &m_Text);
    m_Text.append("</").append(tag).append(">\n");
    FlushIfLong();
}

void QTBStoreAnswer::BeginOutArg(std::string_view name)
{
    m_Text += "<outArgs><arg";
    CATXMLWriter::AppendAttribute("name", name, &m_Text);
    m_Text += ">\n";
}

void QTBStoreAnswer::EndOutArg()
{
    m_Text += "</arg></outArgs>\n";
}

void QTBStoreAnswer::Finish()
{
    m_Text += "</function></answer>\n";
    Flush();
}

void QTBStoreAnswer::FlushIfLong()
{
    if (m_Text.size() >= PIECE_SIZE) {
        Flush();
    }
}

void QTBStoreAnswer::Flush()
{
    if (m_Sink) {
        m_Sink(m_Text);
    }
    m_Text.clear();
}
