#include "StepConverter.h"

#include <cstdio>
#include <memory>

#include <gmock/gmock.h>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATIProduct.h"
#include "CATPrdStructure.h"
#include "CATProductServices.h"
#include "CATStepAssembly.h"
#include "CATStepProducts.h"
#include "CATStepText.h"
#include "ConvertCommand.h"
#include "HostSession.h"
#include "QTBIPdmNodeCont.h"
#include "QTBMatchers.h"
#include "QTBTestFolder.h"
#include "QTBTestSession.h"
#include "StoreInput.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace {

class Converter : public QTBTestSession
{
protected:
    // A product that is used twice, another one of its id, and one whose file is missing; instances are named by the
    // file, by a designator and by nobody.
    static CATStepAssembly MakeAssembly()
    {
        CATStepAssembly assembly;
        assembly.products = {{"A-1", "top & all", "the <first>", "2", "a.stp"},
                             {"P", "part", "", "", "a.stp"},
                             {"P", "other part", "", "", "a.stp"},
                             {"L", "lost", "", "", "lost.stp", true}};
        assembly.usages = {{0, 1, "first", CATStepNameOrigin::File},
                           {0, 1, "R17", CATStepNameOrigin::Designator},
                           {0, 2, "P.1", CATStepNameOrigin::Derived},
                           {0, 3, "lost", CATStepNameOrigin::File}};
        assembly.roots = {0};
        return assembly;
    }

    // Opens a product structure file; its one top.
    static CATIProduct_var OpenTop(const std::string& path)
    {
        CATListValCATBaseUnknown_var documents;
        EXPECT_EQ(CATProductServices::OpenFile(path.c_str(), &documents), S_OK);
        CATIProduct_var spTop;
        if (documents.Size() == 1) {
            CATProductServices::GetRootProduct(*CATDocument::FromComponent(documents[1].Get()), &spTop);
        }
        return spTop;
    }

    const QTBTestFolder m_Folder;
};

class Convert : public testing::Test
{
protected:
    std::string WriteStepFile(const std::string& name) const
    {
        CATStepText text;
        const int top = text.AddProduct("T-1", "top", "A");
        const int part = text.AddProduct("P-1", "part");
        text.AddUsage(top, part, "first");
        text.AddUsage(top, part, "second");
        return m_Folder.Write(name, text.ToString());
    }

    // What is refused, and how.
    template <class Run>
    static std::string Refusal(Run run, ExitCode exitCode)
    {
        try {
            run();
        } catch (const HostError& error) {
            EXPECT_EQ(error.GetExitCode(), exitCode) << error.what();
            return error.what();
        }
        return "not refused";
    }

    const QTBTestFolder m_Folder;
};

} // namespace

TEST_F(Converter, WritesAPartForEachProductAndARelationForEachUsage)
{
    const std::vector<StepConverter::Answer> answers = StepConverter::ToAnswers(MakeAssembly());
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0].name, "structure");
    EXPECT_EQ(answers[0].xml, R"(<?xml version="1.0"?>
<answer>
  <function name="getStructure">
    <o>
      <a name="Class">Part</a>
      <a name="Key">A-1/2</a>
      <a name="PartNumber">A-1</a>
      <a name="Name">top &amp; all</a>
      <a name="Revision">2</a>
      <a name="Description">the &lt;first&gt;</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">A-1/2</nv>
        <nv name="QtbVersion">2</nv>
      </a>
    </o>
    <o>
      <a name="Class">Part</a>
      <a name="Key">P</a>
      <a name="PartNumber">P</a>
      <a name="Name">part</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">P</nv>
      </a>
    </o>
    <o>
      <a name="Class">Part</a>
      <a name="Key">P~2</a>
      <a name="PartNumber">P</a>
      <a name="Name">other part</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">P~2</nv>
      </a>
    </o>
    <o>
      <a name="Class">Part</a>
      <a name="Key">L</a>
      <a name="PartNumber">L</a>
      <a name="Name">lost</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">L</nv>
      </a>
    </o>
    <r>
      <a name="Class">PartPart</a>
      <a name="Key">PartPart/1/A-1/2</a>
      <a name="Relation">PartPart</a>
      <a name="Left">A-1/2</a>
      <a name="Right">P</a>
      <a name="Class1">Part</a>
      <a name="Class2">Part</a>
      <a name="InstanceName">first</a>
      <a name="InstanceNameOrigin">file</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">PartPart/1/A-1/2</nv>
      </a>
    </r>
    <r>
      <a name="Class">PartPart</a>
      <a name="Key">PartPart/2/A-1/2</a>
      <a name="Relation">PartPart</a>
      <a name="Left">A-1/2</a>
      <a name="Right">P</a>
      <a name="Class1">Part</a>
      <a name="Class2">Part</a>
      <a name="InstanceName">R17</a>
      <a name="InstanceNameOrigin">designator</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">PartPart/2/A-1/2</nv>
      </a>
    </r>
    <r>
      <a name="Class">PartPart</a>
      <a name="Key">PartPart/3/A-1/2</a>
      <a name="Relation">PartPart</a>
      <a name="Left">A-1/2</a>
      <a name="Right">P~2</a>
      <a name="Class1">Part</a>
      <a name="Class2">Part</a>
      <a name="InstanceName">P.1</a>
      <a name="InstanceNameOrigin">derived</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">PartPart/3/A-1/2</nv>
      </a>
    </r>
    <r>
      <a name="Class">PartPart</a>
      <a name="Key">PartPart/4/A-1/2</a>
      <a name="Relation">PartPart</a>
      <a name="Left">A-1/2</a>
      <a name="Right">L</a>
      <a name="Class1">Part</a>
      <a name="Class2">Part</a>
      <a name="InstanceName">lost</a>
      <a name="InstanceNameOrigin">file</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">PartPart/4/A-1/2</nv>
      </a>
    </r>
  </function>
</answer>
)");
}

TEST_F(Converter, WritesAFileForEachProductAndSaysWhichIsMissing)
{
    const std::vector<StepConverter::Answer> answers = StepConverter::ToAnswers(MakeAssembly());
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[1].name, "files");
    const auto relation = [](const std::string& part, const std::string& fileClass) {
        return R"(    <r>
      <a name="Class">PartFile</a>
      <a name="Key">PartFile/)" +
               part + R"(</a>
      <a name="Relation">PartFile</a>
      <a name="Left">)" +
               part + R"(</a>
      <a name="Right">)" +
               fileClass + "/" + part + R"(</a>
      <a name="Class1">Part</a>
      <a name="Class2">)" +
               fileClass + R"(</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">PartFile/)" +
               part + R"(</nv>
      </a>
    </r>
)";
    };
    EXPECT_EQ(answers[1].xml, R"(<?xml version="1.0"?>
<answer>
  <function name="getFiles">
    <o>
      <a name="Class">CATProductFile</a>
      <a name="Key">CATProductFile/A-1/2</a>
      <a name="FileName">A-1.CATProduct</a>
      <a name="FileType">CATProduct</a>
      <a name="SourceFile">a.stp</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">CATProductFile/A-1/2</nv>
        <nv name="QtbHasFile">true</nv>
      </a>
    </o>
)" + relation("A-1/2", "CATProductFile") +
                                  R"(    <o>
      <a name="Class">CATPartFile</a>
      <a name="Key">CATPartFile/P</a>
      <a name="FileName">P.CATPart</a>
      <a name="FileType">CATPart</a>
      <a name="SourceFile">a.stp</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">CATPartFile/P</nv>
        <nv name="QtbHasFile">true</nv>
      </a>
    </o>
)" + relation("P", "CATPartFile") +
                                  R"(    <o>
      <a name="Class">CATPartFile</a>
      <a name="Key">CATPartFile/P~2</a>
      <a name="FileName">P.CATPart</a>
      <a name="FileType">CATPart</a>
      <a name="SourceFile">a.stp</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">CATPartFile/P~2</nv>
        <nv name="QtbHasFile">true</nv>
      </a>
    </o>
)" + relation("P~2", "CATPartFile") +
                                  R"(    <o>
      <a name="Class">CATPartFile</a>
      <a name="Key">CATPartFile/L</a>
      <a name="FileName">L.CATPart</a>
      <a name="FileType">CATPart</a>
      <a name="SourceFile">lost.stp</a>
      <a name="QtbInfo" type="nvlist">
        <nv name="QtbKey">CATPartFile/L</nv>
        <nv name="QtbHasFile">false</nv>
      </a>
    </o>
)" + relation("L", "CATPartFile") +
                                  R"(  </function>
</answer>
)");
}

TEST_F(Converter, ItsAnswersMakeAGraph)
{
    for (const StepConverter::Answer& answer : StepConverter::ToAnswers(MakeAssembly())) {
        ASSERT_THAT(TryUpdate(answer.xml), Succeeds()) << answer.name;
    }
    EXPECT_THAT(RightKeys("A-1/2", "PartPart"),
                UnorderedElementsAre("PartPart/1/A-1/2", "PartPart/2/A-1/2", "PartPart/3/A-1/2", "PartPart/4/A-1/2"));
    EXPECT_THAT(LeftKeys("P", "PartPart"), UnorderedElementsAre("PartPart/1/A-1/2", "PartPart/2/A-1/2"))
        << "the shared product is one part";
    EXPECT_THAT(LeftKeys("P~2", "PartPart"), ElementsAre("PartPart/3/A-1/2"));
    EXPECT_EQ(AttributeOf(FindNode("P~2"), "PartNumber"), "P");
    EXPECT_EQ(AttributeOf(FindNode("A-1/2"), "Description"), "the <first>");
    EXPECT_EQ(AttributeOf(FindNode("PartPart/2/A-1/2"), "InstanceName"), "R17");
    EXPECT_THAT(RightKeys("L", "PartFile"), ElementsAre("PartFile/L"));
    EXPECT_EQ(InfoOf(FindNode("CATPartFile/L"), "QtbHasFile"), "false");
}

TEST_F(Converter, ItsProductStructureFileOpensAsTheAssembly)
{
    const std::string xml = StepConverter::ToProducts(CATStepProducts::ToStructure(MakeAssembly(), "a"), "a");
    {
        const CATIProduct_var spTop = OpenTop(m_Folder.Write("products.xml", xml));
        ASSERT_TRUE(spTop != NULL_var);
        EXPECT_EQ(spTop->GetPartNumber(), "A-1");
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spTop->GetChildren("CATIProduct"));
        std::vector<std::string> names;
        for (const CATBaseUnknown_var& spChild : *pChildren) {
            CATUnicodeString usName;
            EXPECT_EQ(CATIProduct_var(spChild)->GetPrdInstanceName(&usName), S_OK);
            names.emplace_back(usName.View());
        }
        EXPECT_THAT(names, ElementsAre("first", "R17", "P.1", "lost"));
        const auto referenceOf = [&](int position) {
            return CATIProduct_var((*pChildren)[position])->GetReferenceProduct();
        };
        EXPECT_TRUE(referenceOf(1) == referenceOf(2)) << "the shared product is one reference";
        EXPECT_FALSE(referenceOf(1) == referenceOf(3));
        EXPECT_TRUE(referenceOf(4) == NULL_var) << "the link is broken";
    }
    CATDocumentServices::RemoveAll();
}

TEST_F(Convert, WritesWhatTheSessionReads)
{
    const ConvertOptions options{WriteStepFile("asm.stp"), m_Folder.GetPath("new/answers")};
    testing::internal::CaptureStdout();
    const int result = RunConvert(options);
    std::fflush(stdout);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), options.folder + "/structure.xml\n" + options.folder +
                                                          "/files.xml\n" + options.folder +
                                                          "/products.xml\n2 products, 2 usages, 2 occurrences, "
                                                          "depth 1\n");
    HostSession session("", "");
    session.ReadAnswer(options.folder + "/structure.xml");
    session.ReadAnswer(options.folder + "/files.xml");
    CATListValCATBaseUnknown_var nodes;
    EXPECT_EQ(session.GetPdmNodeCont()->GetAllPdmNodes(&nodes), S_OK);
    EXPECT_EQ(nodes.Size(), 2 + 2 + 2 + 2);
    EXPECT_EQ(session.OpenAssembly(options.folder + "/products.xml").Size(), 1);
}

TEST_F(Convert, RefusesWhatCannotBeReadOrWritten)
{
    EXPECT_THAT(Refusal(
                    [&] {
                        RunConvert({m_Folder.GetPath("missing.stp"), m_Folder.GetPath("answers")});
                    },
                    ExitCode::BadInput),
                HasSubstr("missing.stp"));
    const std::string path = WriteStepFile("asm.stp");
    EXPECT_THAT(Refusal(
                    [&] {
                        RunConvert({path, m_Folder.Write("file", "")});
                    },
                    ExitCode::Failure),
                HasSubstr("cannot be written"));
}

TEST_F(Convert, StepFilesAreAnswersForAStoreWhateverTheCaseOfTheirEnding)
{
    const HostSession session("", "");
    for (const char* name : {"asm.stp", "asm.STEP"}) {
        const std::vector<CATIDOMDocument_var> answers = StoreInput::ReadAnswers(WriteStepFile(name));
        ASSERT_EQ(answers.size(), 2U) << name;
        CATListValCATBaseUnknown_var objects;
        EXPECT_EQ(session.GetPdmNodeCont()->UpdatePdmGraph(answers[0], &objects, nullptr), S_OK);
        EXPECT_EQ(objects.Size(), 2) << name;
    }
    EXPECT_THAT(Refusal([&] { StoreInput::ReadAnswers(m_Folder.Write("bad.stp", "nothing")); }, ExitCode::BadInput),
                HasSubstr("bad.stp"));
}

TEST_F(Convert, SessionOpensStepFilesAsAssemblies)
{
    HostSession session("", "");
    EXPECT_EQ(session.OpenAssembly(WriteStepFile("asm.stp")).Size(), 1);
    EXPECT_THAT(Refusal([&] { session.OpenAssembly(m_Folder.Write("bad.stp", "nothing")); }, ExitCode::BadInput),
                HasSubstr("bad.stp"));
}
