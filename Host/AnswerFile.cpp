#include "AnswerFile.h"

#include <fstream>
#include <istream>
#include <iterator>

#include <fmt/format.h>

#include "CATEnvLimit.h"
#include "CATXMLStrictElement.h"
#include "CATXMLTextCheck.h"
#include "HostSession.h"
#include "QTBXmlUtil.h"

namespace {

const CATUnicodeString EXPECTED("a PDM answer: a document element with one element \"function\" in it");

// What keeps the document from being an answer, and where; an empty text for an answer.
CATUnicodeString FindFault(const CATDOMElementView& root, CATDOMElementView* pPlace)
{
    *pPlace = root;
    int count = 0;
    for (CATDOMElementView child = root.GetFirstChild(); child; child = child.GetNextSibling()) {
        if (child.HasTagName("function") && ++count == 2) {
            *pPlace = child;
            return "there is a second element \"function\"";
        }
    }
    if (count == 1) {
        return CATUnicodeString();
    }
    // The files that are likely to be taken for answers.
    if (root.HasTagName("products")) {
        return "the file is a product structure";
    }
    if (root.HasTagName("qtbSchema")) {
        return "the file is a PDM schema";
    }
    return "there is no element \"function\" in " + CATXMLStrictElement::Quote(root.GetTagName());
}

// Refuses a document that is no answer. Lines are those of its text, which is given by who has it.
template <class GetText>
void RequireAnswer(const CATIDOMDocument_var& spDocument, const std::string& name, GetText getText)
{
    CATIDOMElement_var spRoot;
    HostSession::Require(spDocument->GetDocumentElement(&spRoot), ExitCode::BadInput, "answer " + name);
    CATDOMElementView place;
    const CATUnicodeString problem = FindFault(spRoot->GetView(), &place);
    if (!problem.IsEmpty()) {
        HostSession::Require(
            CATXMLTextCheck::Refuse(getText(), CATXMLStrictElement(place).GetOffset(), name.c_str(), problem, EXPECTED),
            ExitCode::BadInput, "answer");
    }
}

// All bytes, as long as a file may have as many.
std::string ReadBytes(std::istream& stream, const std::string& name)
{
    const auto most = static_cast<std::size_t>(CATGetMaxFileBytes());
    std::string bytes;
    char buffer[65536];
    while (stream.read(buffer, sizeof buffer) || stream.gcount() > 0) {
        bytes.append(buffer, static_cast<std::size_t>(stream.gcount()));
        if (bytes.size() > most) {
            throw HostError(ExitCode::BadInput,
                            fmt::format("answer: {} has more than {} bytes (CAT_MAX_FILE_MB)", name, most));
        }
    }
    return bytes;
}

} // namespace

CATIDOMDocument_var AnswerFile::Read(const std::string& path)
{
    HostSession::RequireFile(path, "answer");
    CATIDOMDocument_var spAnswer;
    HostSession::Require(QTBXmlUtil::GetDomDocumentFromFile(path.c_str(), &spAnswer), ExitCode::BadInput, "answer");
    RequireAnswer(spAnswer, path, [&path] {
        std::ifstream stream(path, std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        HostSession::Require(CATXMLTextCheck::DecodeBytes(path.c_str(), &text), ExitCode::BadInput, "answer");
        return text;
    });
    return spAnswer;
}

CATIDOMDocument_var AnswerFile::Read(std::istream& stream, const std::string& name)
{
    std::string text = ReadBytes(stream, name);
    HostSession::Require(CATXMLTextCheck::DecodeBytes(name.c_str(), &text), ExitCode::BadInput, "answer");
    HostSession::Require(CATXMLTextCheck::CheckText(text, name.c_str()), ExitCode::BadInput, "answer");
    CATIDOMDocument_var spAnswer;
    HostSession::Require(QTBXmlUtil::GetTrustedDomDocument(text, &spAnswer), ExitCode::BadInput, "answer");
    RequireAnswer(spAnswer, name, [&text] { return text; });
    return spAnswer;
}
