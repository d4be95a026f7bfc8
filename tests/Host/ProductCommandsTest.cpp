// qtbhost diff, dirty and types.

#include "ProductCommands.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "CATBaseUnknown.h"
#include "HostError.h"
#include "QTBTestFolder.h"

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

const std::string EXAMPLES = QTB_SOURCE_DIR "/examples/";

class ProductCommand : public ::testing::Test
{
protected:
    // A part with a file object of that name below it, in the form of an answer.
    static std::string MakePart(const std::string& number, const std::string& fileName, const char* hasFile = "true")
    {
        return "<o><a name=\"Class\">Part</a><a name=\"Key\">" + number + "</a><a name=\"PartNumber\">" + number +
               "</a></o><o><a name=\"Class\">CATPartFile</a><a name=\"Key\">File/" + number +
               "</a><a name=\"FileName\">" + fileName +
               "</a><a name=\"QtbInfo\" type=\"nvlist\"><nv name=\"QtbHasFile\">" + hasFile +
               "</nv></a></o><r><a name=\"Class\">PartFile</a><a name=\"Key\">PartFile/" + number +
               "</a><a name=\"Relation\">PartFile</a><a name=\"Left\">" + number + "</a><a name=\"Right\">File/" +
               number + "</a></r>";
    }
    std::string WriteAnswer(const std::string& items) const
    {
        return m_Folder.Write("answer.xml", "<answer><function name=\"get\">" + items + "</function></answer>");
    }
    std::string WriteProducts(const std::string& products, const std::string& fileName = "products.xml") const
    {
        return m_Folder.Write(fileName, "<products>" + products + "</products>");
    }
    // What a command prints.
    template <class Command>
    static std::string Run(Command command, const ProductOptions& options)
    {
        const int componentsBefore = CATBaseUnknown::GetLiveComponentCount();
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(command(options), 0);
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), componentsBefore);
        return ::testing::internal::GetCapturedStdout();
    }

    QTBTestFolder m_Folder;
    ProductOptions m_Options;
};

using DiffCommand = ProductCommand;
using DirtyCommand = ProductCommand;
using TypesCommand = ProductCommand;

} // namespace

TEST_F(DirtyCommand, WithoutAnswersEveryDocumentIsNewToThePdmSystem)
{
    m_Options.assembly = EXAMPLES + "as1/products.xml";
    EXPECT_THAT(Run(&RunDirty, m_Options), AllOf(HasSubstr("save rod_1 (rod), rod.CATPart: not in the PDM system\n"),
                                                 HasSubstr("\n9 of 9 documents have to be saved\n")));
}

TEST_F(DirtyCommand, AnswersSayWhatThePdmSystemHas)
{
    m_Options.assembly = EXAMPLES + "as1/products.xml";
    m_Options.answers = {EXAMPLES + "as1/structure.xml", EXAMPLES + "as1/files.xml"};
    EXPECT_THAT(Run(&RunDirty, m_Options),
                AllOf(HasSubstr("keep rod_1 (rod), rod.CATPart: no changes in session, and no file on disk\n"),
                      HasSubstr("\n0 of 9 documents have to be saved\n")));
}

TEST_F(DirtyCommand, SaysTheTrueReason)
{
    m_Options.assembly =
        WriteProducts("<product id='top' file='top.CATProduct' partNumber='top'><instance of='same' name='same.1'/>"
                      "<instance of='new' name='new.1'/><instance of='changed' name='changed.1'/>"
                      "<instance of='bare' name='bare.1'/><instance of='renamed' name='renamed.1'/>"
                      "<instance of='disk' name='disk.1'/><instance of='unsaved' name='unsaved.1'/>"
                      "<instance of='lost' name='lost.1'/></product>"
                      "<product id='same' file='same.CATPart' partNumber='same'/>"
                      "<product id='new' file='new.CATPart' partNumber='new'/>"
                      "<product id='changed' file='changed.CATPart' partNumber='changed' dirty='true'/>"
                      "<product id='bare' file='bare.CATPart' partNumber='bare'/>"
                      "<product id='renamed' file='renamed.CATPart' partNumber='renamed'/>"
                      "<product id='disk' file='disk.CATPart' partNumber='disk'/>"
                      "<product id='unsaved' type='CATPart' partNumber='unsaved'/>"
                      "<product id='lost' file='lost.CATPart' link='broken'/>");
    m_Options.answers = {WriteAnswer(MakePart("same", "same.CATPart") + MakePart("changed", "changed.CATPart") +
                                     MakePart("bare", "bare.CATPart", "false") + MakePart("renamed", "other.CATPart") +
                                     MakePart("disk", "disk.CATPart") + MakePart("unsaved", "unsaved.CATPart"))};
    const std::string path = m_Folder.Write("disk.CATPart", "a file that the session knows nothing of");
    EXPECT_EQ(
        Run(&RunDirty, m_Options),
        "save top, top.CATProduct: not in the PDM system\n"
        "keep same.1 (same), same.CATPart: no changes in session, and no file on disk\n"
        "save new.1 (new), new.CATPart: not in the PDM system\n"
        "save changed.1 (changed), changed.CATPart: has changes that are not saved\n"
        "save bare.1 (bare), bare.CATPart: the PDM system has no file of File/bare\n"
        "save renamed.1 (renamed), renamed.CATPart: the PDM system has another file, other.CATPart "
        "(File/renamed)\n"
        "save disk.1 (disk), disk.CATPart: the file is not the one that was last exchanged with the PDM system: " +
            path +
            "\n"
            "keep unsaved.1 (unsaved): was never saved: there is no file to compare\n"
            "save lost.1, lost.CATPart: broken link: the document was not found, so nothing in the PDM system "
            "corresponds to it\n"
            "7 of 9 documents have to be saved\n");
}

TEST_F(DirtyCommand, TellsDocumentsApartByDocumentAndLeavesComponentsOut)
{
    m_Options.assembly = WriteProducts(
        "<product id='top' file='top.CATProduct' partNumber='top'><instance of='a' name='a.1'/>"
        "<instance of='b' name='b.1'/><instance of='a' name='a.2'/><instance of='c' name='c.1'/></product>"
        "<product id='a' file='a.CATPart' partNumber='bolt'/><product id='b' file='b.CATPart' partNumber='bolt'/>"
        "<component id='c' partNumber='cover'><instance of='a' name='a.3'/></component>");
    EXPECT_EQ(Run(&RunDirty, m_Options), "save top, top.CATProduct: not in the PDM system\n"
                                         "save a.1 (bolt), a.CATPart: not in the PDM system\n"
                                         "save b.1 (bolt), b.CATPart: not in the PDM system\n"
                                         "3 of 3 documents have to be saved\n");
    m_Options.asJson = true;
    const auto json = nlohmann::json::parse(Run(&RunDirty, m_Options));
    EXPECT_EQ(json["products"].size(), 3U);
    EXPECT_EQ(json["products"][2]["file"], "b.CATPart");
}

TEST_F(TypesCommand, TellsDocumentsApartByDocumentAndShowsComponents)
{
    m_Options.assembly = WriteProducts(
        "<product id='top' file='top.CATProduct' partNumber='top'><instance of='a' name='a.1'/>"
        "<instance of='b' name='b.1'/><instance of='a' name='a.2'/><instance of='c' name='c.1'/></product>"
        "<product id='a' file='a.CATPart' partNumber='bolt'/><product id='b' file='b.CATPart' partNumber='bolt'/>"
        "<component id='c' partNumber='cover'/>");
    const std::string types = Run(&RunTypes, m_Options);
    EXPECT_THAT(types, AllOf(HasSubstr("a.1 (bolt): CATPart a.CATPart, "), HasSubstr("b.1 (bolt): CATPart b.CATPart, "),
                             HasSubstr("c.1 (cover): EmbeddedComponent, PDM"), Not(HasSubstr("a.2"))));
}

TEST_F(DiffCommand, AnInstanceThatPlacesAnotherPartIsMissingAndAdded)
{
    const std::string parts = "<product id='a' file='a.CATPart' partNumber='a'/>"
                              "<product id='b' file='b.CATPart' partNumber='b'/>";
    const std::string top = "<product id='top' file='top.CATProduct' partNumber='top'>";
    m_Options.oldAssembly =
        WriteProducts(top + "<instance of='a' name='x'/><instance of='b' name='y'/></product>" + parts, "old.xml");
    m_Options.assembly =
        WriteProducts(top + "<instance of='b' name='x'/><instance of='b' name='y'/></product>" + parts, "new.xml");
    EXPECT_EQ(Run(&RunDiff, m_Options), "top\n  + x (b)\n  - x (a)\n1 instance added, 1 missing\n");
    m_Options.asJson = true;
    const auto json = nlohmann::json::parse(Run(&RunDiff, m_Options));
    EXPECT_EQ(json["products"][0]["partNumber"], "top");
    EXPECT_EQ(json["products"][0]["added"][0], "x (b)");
    EXPECT_EQ(json["products"][0]["missing"][0], "x (a)");
    EXPECT_EQ(json["added"], 1);
}

TEST_F(DiffCommand, ReportsTheInstancesOfAProductThatOnlyOneAssemblyHas)
{
    const std::string part = "<product id='a' file='a.CATPart' partNumber='a'/>";
    const std::string top = "<product id='top' file='top.CATProduct' partNumber='top'><instance of='sub' name='s'/>";
    m_Options.oldAssembly = WriteProducts(top +
                                              "</product><product id='sub' file='sub.CATProduct' partNumber='sub'>"
                                              "<instance of='a' name='x'/><instance of='a' name='y'/></product>" +
                                              part,
                                          "old.xml");
    m_Options.assembly = WriteProducts(top +
                                           "</product><product id='sub' file='kit.CATProduct' partNumber='kit'>"
                                           "<instance of='a' name='x'/></product>" +
                                           part,
                                       "new.xml");
    EXPECT_EQ(Run(&RunDiff, m_Options), "top\n  + s (kit)\n  - s (sub)\nkit\n  + x (a)\nsub\n  - x (a)\n  - y (a)\n"
                                        "2 instances added, 3 missing\n");
}

TEST_F(DiffCommand, TellsDocumentsOfOnePartNumberApartByTheirFiles)
{
    const auto write = [this](const char* inB, const char* fileName) {
        return WriteProducts(
            "<product id='top' file='top.CATProduct' partNumber='top'><instance of='a' name='a.1'/>"
            "<instance of='b' name='b.1'/></product>"
            "<product id='a' file='a.CATProduct' partNumber='kit'><instance of='p' name='x'/></product>"
            "<product id='b' file='b.CATProduct' partNumber='kit'><instance of='p' name='" +
                std::string(inB) + "'/></product><product id='p' file='p.CATPart' partNumber='p'/>",
            fileName);
    };
    m_Options.oldAssembly = write("x", "old.xml");
    m_Options.assembly = write("y", "new.xml");
    EXPECT_EQ(Run(&RunDiff, m_Options), "kit (b.CATProduct)\n  + y (p)\n  - x (p)\n1 instance added, 1 missing\n");
}

TEST_F(DiffCommand, WithAnswersAProductThatIsGoneMissesWhatThePdmDataKnow)
{
    std::string relation = "<r><a name=\"Class\">PartPart</a><a name=\"Key\">PartPart/1</a><a name=\"Relation\">"
                           "PartPart</a><a name=\"Left\">sub</a><a name=\"Right\">a</a>"
                           "<a name=\"InstanceName\" type=\"list\"><v>x</v></a></r>";
    m_Options.answers = {WriteAnswer(MakePart("sub", "sub.CATProduct") + MakePart("a", "a.CATPart") + relation)};
    const std::string part = "<product id='a' file='a.CATPart' partNumber='a'/>";
    m_Options.oldAssembly = WriteProducts(
        "<product id='top' file='top.CATProduct' partNumber='top'><instance of='sub' name='s'/></product>"
        "<product id='sub' file='sub.CATProduct' partNumber='sub'><instance of='a' name='x'>"
        "<property name='QtbRelationKey'>PartPart/1</property></instance><instance of='a' name='y'/></product>" +
            part,
        "old.xml");
    m_Options.assembly = WriteProducts("<product id='top' file='top.CATProduct' partNumber='top'/>", "new.xml");
    EXPECT_EQ(Run(&RunDiff, m_Options), "sub\n  - PartPart/1/x\n0 instances added, 1 missing\n");
}
