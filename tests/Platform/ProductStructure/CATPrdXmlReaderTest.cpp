#include <fstream>
#include <iterator>

#include "CATProductTestSession.h"
#include "CATXMLError.h"
#include "QTBTestFolder.h"

using ProductStructureXml = CATProductTestSession;

namespace {

const CATXMLError* ErrorOf(HRESULT hr)
{
    return dynamic_cast<const CATXMLError*>(CATError::CATGetLastError(hr, nullptr));
}

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The example of the documentation.
std::string GetExample()
{
    const std::string text = ReadFile(QTB_SOURCE_DIR "/docs/formats.md");
    const std::size_t mark = text.find("<!-- example: products -->");
    const std::size_t begin = text.find("<?xml", mark);
    return text.substr(begin, text.find("```", begin) - begin);
}

TEST_F(ProductStructureXml, TheExampleOfTheDocumentationSaysWhatIsRead)
{
    const std::string xml = GetExample();
    CATPrdStructure structure;
    ASSERT_EQ(CATPrdXmlReader::ReadText(CATUnicodeString(std::string_view(xml)), "example", &structure), S_OK);
    CATListValCATBaseUnknown_var documents;
    ASSERT_EQ(CATProductServices::Open(structure, &documents), S_OK);
    ASSERT_EQ(documents.Size(), 1);
    const CATIProduct_var spRoot = Root("GB-100");
    EXPECT_TRUE(documents[1] == CATBaseUnknown_var(DocumentOf(spRoot)));
    EXPECT_EQ(FileOf(spRoot), "/data/gearbox/gearbox.CATProduct");
    EXPECT_TRUE(DocumentOf(spRoot)->IsDirty());
    EXPECT_EQ(ChildNames(spRoot), "Shaft.1 Shaft.2 Cover.1 Screw.1 Plate.1 ");
    EXPECT_EQ(ChildNames(Child(spRoot, 3)), "Screw.1 Screw.2 ");
    EXPECT_EQ(Child(spRoot, 3)->GetPartNumber(), "Cover");
    EXPECT_EQ(Child(spRoot, 4)->GetPartNumber(), "");
    EXPECT_TRUE(Child(spRoot, 5)->GetReferenceProduct() == NULL_var);
    CATUnicodeString usValue;
    EXPECT_EQ(CATIPrdProperties_var(Child(spRoot, 1))->GetUserProperty("QtbRelationKey", &usValue), S_OK);
    EXPECT_EQ(usValue, "Usage/17");
    EXPECT_EQ(CATIPrdProperties_var(Child(spRoot, 1))->GetDescriptionInst(&usValue), S_OK);
    EXPECT_EQ(usValue, "drive side");
    EXPECT_EQ(CATIPrdLink_var(Child(spRoot, 4))->LoadDocument(), S_OK);
    EXPECT_EQ(Child(Child(spRoot, 3), 1)->GetPartNumber(), "ISO4762-M6x20");
}

TEST_F(ProductStructureXml, AFileIsReadRelativeToItsDirectory)
{
    const QTBTestFolder folder;
    const std::string path =
        folder.Write("session.xml", "<products><product id='a' file='sub/a.CATPart' partNumber='A'/>"
                                    "<product id='b' file='/b.CATPart' partNumber='B'/></products>");
    EXPECT_EQ(CATProductServices::OpenFile(path.c_str(), nullptr), S_OK);
    EXPECT_EQ(FileOf(Root("A")), folder.GetPath("sub/a.CATPart"));
    EXPECT_EQ(FileOf(Root("B")), "/b.CATPart");
    folder.Write("session.xml", "<products>\n<product id='c' file='c.CATPart' link='lost'/></products>");
    const HRESULT hr = CATProductServices::OpenFile(path.c_str(), nullptr);
    ASSERT_NE(ErrorOf(hr), nullptr);
    EXPECT_EQ(ErrorOf(hr)->GetSourceName(), path.c_str());
    EXPECT_EQ(ErrorOf(hr)->GetLine(), 2);
    EXPECT_EQ(ErrorOf(CATProductServices::OpenFile((path + ".not").c_str(), nullptr))->GetLine(), 0);
}

TEST_F(ProductStructureXml, NamesInAnyScriptAreRead)
{
    Open("<product id='p' file='\xD0\x9F.CATProduct' partNumber='\xE9\xBD\xBF\xE8\xBD\xAE'>"
         "<instance of='b' name='\xCE\xA9.1'/></product><product id='b' file='b.CATPart' partNumber='B'/>");
    EXPECT_EQ(ChildNames(Root("\xE9\xBD\xBF\xE8\xBD\xAE")), "\xCE\xA9.1 ");
    EXPECT_EQ(DocumentOf(Root("\xE9\xBD\xBF\xE8\xBD\xAE"))->GetDisplayName(), "\xD0\x9F.CATProduct");
}

TEST_F(ProductStructureXml, WhatIsWrongIsRefusedWithItsLine)
{
    struct Case
    {
        const char* content;
        int line;
        const char* problem;
    };
    const Case cases[] = {
        {"\n<thing/>", 2, "the element \"thing\" in the element \"products\""},
        {"\n<product id='a' file='a.CATPart' colour='red'/>", 2, "the attribute \"colour\" of the element \"product\""},
        {"<product id='a' file='a.CATPart'>text</product>", 1, "text in the element \"product\""},
        {"<product file='a.CATPart'/>", 1, "the element \"product\" has no attribute \"id\""},
        {"<product id='a' file='a.CATPart'/>\n<product id='a' file='b.CATPart'/>", 2,
         "the value \"a\" of the attribute \"id\""},
        {"<product id='a' file=''/>", 1, "the value \"\" of the attribute \"file\""},
        {"<product id='a' file='a.txt'/>", 1, "the product of the file \"a.txt\" has no document type"},
        {"<product id='a' file='a.CATPart' type='Text'/>", 1, "the value \"Text\" of the attribute \"type\""},
        {"<product id='a' file='a.CATPart' link='lost'/>", 1, "the value \"lost\" of the attribute \"link\""},
        {"<product id='a' file='a.CATPart' dirty='yes'/>", 1, "the value \"yes\" of the attribute \"dirty\""},
        {"<product id='a' file='a.CATPart' link='broken' dirty='true'/>", 1,
         "the value \"true\" of the attribute \"dirty\""},
        {"<product id='a' file='a.CATPart' link='broken' open='true'/>", 1,
         "the value \"true\" of the attribute \"open\""},
        {"<product id='a' partNumber='A' link='broken'/>", 1, "the product \"A\" names no file"},
        {"<product id='a' file='a.CATPart' link='visualization'/>", 1,
         "the product of the file \"a.CATPart\" has no shape to be shown by"},
        {"<product id='a' file='a.CATPart' shape='a.cgr'/>", 1,
         "the product of the file \"a.CATPart\" has a file with its shape"},
        {"<product id='a' file='a.CATPart'/>\n<product id='b' file='a.CATPart'/>", 2,
         "the file \"a.CATPart\" stands for two documents"},
        {"<product id='a' file='a.CATPart'><property name='k'/>\n<property name='k'/></product>", 2,
         "the value \"k\" of the attribute \"name\""},
        {"<product id='a' file='a.CATProduct'>\n<instance of='b' name='B.1'/></product>", 2,
         "the value \"b\" of the attribute \"of\""},
        {"<product id='a' file='a.CATProduct'><instance of='b' name=''/></product>\n<product id='b' file='b.CATPart'/>",
         1, "the value \"\" of the attribute \"name\""},
        {"<product id='a' file='a.CATPart' link='broken'><instance of='b' name='B.1'/></product>"
         "<product id='b' file='b.CATPart'/>",
         1, "the product of the file \"a.CATPart\" has an instance in it but is not loaded"},
        {"\n<component id='c' partNumber='C'/>", 2, "the embedded component \"C\" belongs to no document"},
        {"<product id='a' file='a.CATProduct'><instance of='c' name='C.1'/></product>\n"
         "<product id='b' file='b.CATProduct'>\n<instance of='c' name='C.1'/></product>"
         "<component id='c' partNumber='C'/>",
         3, "the embedded component \"C\" belongs to two documents"},
    };
    for (const Case& wrong : cases) {
        SCOPED_TRACE(wrong.content);
        const HRESULT hr = TryOpen(wrong.content);
        const CATXMLError* pError = ErrorOf(hr);
        ASSERT_NE(pError, nullptr);
        EXPECT_EQ(pError->GetSourceName(), "text");
        EXPECT_EQ(pError->GetLine(), wrong.line);
        EXPECT_EQ(pError->GetProblem(), wrong.problem);
        EXPECT_FALSE(pError->GetExpected().IsEmpty());
        EXPECT_EQ(SessionFiles(), "");
    }
}

TEST_F(ProductStructureXml, AForeignDocumentIsRefused)
{
    CATPrdStructure structure;
    const HRESULT hr = CATPrdXmlReader::ReadText("<answer/>", "text", &structure);
    ASSERT_NE(ErrorOf(hr), nullptr);
    EXPECT_EQ(ErrorOf(hr)->GetProblem(), "the element \"answer\"");
    EXPECT_EQ(ErrorOf(hr)->GetExpected(), "<products>");
}

TEST_F(ProductStructureXml, ALoopIsRefusedAtOneOfItsInstances)
{
    const HRESULT hr = TryOpen("<product id='top' file='top.CATProduct'><instance of='a' name='A.1'/></product>\n"
                               "<product id='a' file='a.CATProduct'><instance of='b' name='B.1'/></product>\n"
                               "<product id='b' file='b.CATProduct'><instance of='c' name='C.1'/>"
                               "<instance of='z' name='Z.1'/></product>\n"
                               "<product id='c' file='c.CATProduct'><instance of='a' name='A.1'/></product>\n"
                               "<product id='z' file='z.CATPart'/>");
    const CATXMLError* pError = ErrorOf(hr);
    ASSERT_NE(pError, nullptr);
    EXPECT_TRUE(pError->GetLine() >= 2 && pError->GetLine() <= 4) << pError->GetLine();
    EXPECT_GE(pError->GetProblem().SearchSubString(" contains itself"), 0);
    const HRESULT hrSelf = TryOpen("<product id='a' file='a.CATProduct'>\n<instance of='a' name='A.1'/></product>");
    ASSERT_NE(ErrorOf(hrSelf), nullptr);
    EXPECT_EQ(ErrorOf(hrSelf)->GetLine(), 2);
    EXPECT_EQ(SessionFiles(), "");
}

TEST_F(ProductStructureXml, TextCutOffAnywhereIsRefusedAndLeavesTheSessionUsable)
{
    Open("<product id='x' file='/x.CATPart' partNumber='X'/>");
    const std::string xml = GetExample();
    const std::size_t end = xml.rfind('>');
    for (std::size_t length = 0; length < end; ++length) {
        CATPrdStructure structure;
        const HRESULT hr =
            CATPrdXmlReader::ReadText(CATUnicodeString(std::string_view(xml).substr(0, length)), "cut", &structure);
        ASSERT_NE(ErrorOf(hr), nullptr) << length;
        ASSERT_TRUE(structure.references.empty());
    }
    EXPECT_EQ(SessionFiles(), "/x.CATPart ");
    EXPECT_EQ(Root("X")->SetPartNumber("Y"), S_OK);
}

} // namespace
