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
