// A schema file. What is accepted works for a session in which the graph was read under another schema.

#include "QTBFuzzSession.h"
#include "QTBSchemaUtil.h"

namespace {

constexpr const char* ANSWER = R"(<answer><function name="f">
<o><a name="Class">Part</a><a name="Key">P1</a></o><o><a name="Class">Part</a><a name="Key">P2</a></o>
<o><a name="Class">Document</a><a name="Key">D</a></o>
<r><a name="Class">PartPart</a><a name="Key">R1</a><a name="Relation">PartPart</a><a name="Left">P1</a><a name="Right">P2</a></r>
<r><a name="Class">PartDocument</a><a name="Key">R2</a><a name="Relation">PartDocument</a><a name="Left">P2</a><a name="Right">D</a></r>
</function></answer>)";

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QTBFuzzSession session;
    QTBFuzzSession::LoadShippedSchema();
    const QTBIRepNodeCont_var spIRepNodeCont = QTBFuzzSession::OpenWindow();
    QTBFuzzSession::ReadAnswer(ANSWER);
    const std::string path = QTBFuzzSession::WriteFile("schema.xml", QTBFuzzSession::ToText(data, size));
    if (FAILED(QTBSchemaUtil::LoadSchema(path.c_str()))) {
        return 0;
    }
    QTBFuzzSession::ExpandAll(spIRepNodeCont, true);
    QTBFuzzSession::ReadAnswer(ANSWER);
    QTBFuzzSession::ExpandAll(spIRepNodeCont, false);
    QTBFuzzSession::LookAtEverything(spIRepNodeCont);
    QTBFuzzSession::CheckInvariants();
    return 0;
}
