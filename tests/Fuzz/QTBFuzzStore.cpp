// Requests to a PDM store, one a line: a word for the request and what it works on. The last one takes the rest of the
// line, so that it may be XML. At the end the store must find nothing wrong with itself.

#include <filesystem>
#include <memory>

#include "QTBFuzzSession.h"
#include "QTBPdmStore.h"
#include "QTBXmlUtil.h"

namespace {

class Words
{
public:
    explicit Words(std::string_view line) : m_Rest(line) {}

    CATUnicodeString Next()
    {
        const std::size_t end = m_Rest.find(' ');
        const CATUnicodeString usWord(m_Rest.substr(0, end));
        m_Rest.remove_prefix(end == std::string_view::npos ? m_Rest.size() : end + 1);
        return usWord;
    }
    CATUnicodeString Rest() const { return CATUnicodeString(m_Rest); }
    QTBPdmStore::Keys Keys()
    {
        QTBPdmStore::Keys keys;
        while (!m_Rest.empty()) {
            keys.push_back(Next());
        }
        return keys;
    }

private:
    std::string_view m_Rest;
};

HRESULT Request(QTBPdmStore& store, Words words, const QTBPdmStore::Receiver& receiver)
{
    const CATUnicodeString usRequest = words.Next();
    if (usRequest == "get") {
        return store.GetItems(words.Keys(), receiver);
    }
    if (usRequest == "expand") {
        const CATUnicodeString usRelation = words.Next();
        return store.Expand({words.Keys(), {{usRelation, true}, {usRelation, false}}, -1}, receiver);
    }
    if (usRequest == "query") {
        QTBStoreQuery query;
        query.className = words.Next();
        const CATUnicodeString usName = words.Next();
        if (!usName.IsEmpty()) {
            query.conditions.push_back({usName, words.Rest()});
        }
        return store.Query(query, receiver);
    }
    if (usRequest == "checkout") {
        return store.CheckOut(words.Keys(), receiver);
    }
    if (usRequest == "checkin") {
        return store.CheckIn(words.Keys(), {}, receiver);
    }
    if (usRequest == "promote") {
        return store.Promote(words.Keys(), receiver);
    }
    if (usRequest == "revise") {
        return store.Revise(words.Keys(), receiver);
    }
    if (usRequest == "update") {
        const CATUnicodeString usKey = words.Next();
        return store.UpdateAttributes(usKey, words.Rest(), receiver);
    }
    if (usRequest == "create") {
        const CATUnicodeString usClass = words.Next();
        const CATUnicodeString usKey = words.Next();
        return store.CreateObject(usClass, usKey, words.Rest(), receiver);
    }
    if (usRequest == "relate") {
        const CATUnicodeString usClass = words.Next();
        const CATUnicodeString usLeft = words.Next();
        const CATUnicodeString usRight = words.Next();
        return store.CreateRelation(usClass, usLeft, usRight, words.Rest(), receiver);
    }
    if (usRequest == "delete") {
        const CATUnicodeString usOption = words.Next();
        return store.Delete(words.Keys(), usOption == "-" ? CATUnicodeString() : usOption, receiver);
    }
    if (usRequest == "invoke") {
        const CATUnicodeString usFunction = words.Next();
        const CATUnicodeString usArgument = words.Next();
        return store.Invoke(usFunction, {{usArgument, words.Rest()}}, receiver);
    }
    if (usRequest == "export") {
        return store.Export(words.Next() == "newest", receiver);
    }
    if (usRequest == "import") {
        CATIDOMDocument_var spAnswer;
        const HRESULT hr = QTBXmlUtil::GetDomDocument(words.Rest(), &spAnswer);
        QTBStoreImportReport report;
        return SUCCEEDED(hr) ? store.Import(spAnswer, "", &report) : hr;
    }
    return E_FAIL;
}

// A store without anything in it, copied for each input: making one takes long.
const std::string& GetEmptyStore()
{
    static const std::string s_Path = [] {
        std::string path = QTBFuzzSession::GetFolder() + "/empty.store";
        if (FAILED(QTBPdmStore::Create(path.c_str()))) {
            QTBFuzzSession::Fail("no store can be made");
        }
        return path;
    }();
    return s_Path;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QTBFuzzSession session;
    const QTBIRepNodeCont_var spIRepNodeCont = QTBFuzzSession::OpenWindow();
    const std::string path = QTBFuzzSession::GetFolder() + "/pdm.store";
    for (const char* rest : {"-wal", "-shm"}) {
        std::filesystem::remove(path + rest);
    }
    std::filesystem::copy_file(GetEmptyStore(), path, std::filesystem::copy_options::overwrite_existing);
    QTBPdmStore::Options options;
    options.user = "kim";
    std::unique_ptr<QTBPdmStore> pStore;
    if (FAILED(QTBPdmStore::Open(path.c_str(), options, &pStore))) {
        QTBFuzzSession::Fail("the store cannot be opened");
    }
    constexpr std::size_t MOST_LINES = 40;
    std::size_t lines = 0;
    for (const std::string_view line : QTBFuzzSession::SplitLines(QTBFuzzSession::ToText(data, size))) {
        if (++lines > MOST_LINES) {
            break;
        }
        std::string answer;
        if (SUCCEEDED(Request(*pStore, Words(line), [&answer](std::string_view piece) { answer.append(piece); })) &&
            !answer.empty()) {
            // What the store says, a session must be able to read.
            CATIDOMDocument_var spAnswer;
            if (FAILED(QTBXmlUtil::GetDomDocument(CATUnicodeString(std::string_view(answer)), &spAnswer))) {
                QTBFuzzSession::Fail("the store answers no XML: " + answer);
            }
            QTBFuzzSession::ReadAnswer(answer);
        }
    }
    CATListValCATUnicodeString faults;
    if (FAILED(pStore->Check(&faults)) || faults.Size() > 0) {
        QTBFuzzSession::Fail("the store is damaged: " +
                             std::string(faults.Size() > 0 ? faults[1].View() : std::string_view("no answer")));
    }
    QTBFuzzSession::CheckInvariants();
    return 0;
}
