// A PDM answer, read twice into a session with a window, expanded in both directions, folded and cleaned up.

#include "QTBFuzzSession.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view xml = QTBFuzzSession::ToText(data, size);
    const QTBFuzzSession session;
    const QTBIRepNodeCont_var spIRepNodeCont = QTBFuzzSession::OpenWindow();
    QTBFuzzSession::ReadAnswer(xml);
    QTBFuzzSession::CheckInvariants();
    QTBFuzzSession::ExpandAll(spIRepNodeCont, true);
    QTBFuzzSession::ReadAnswer(xml);
    QTBFuzzSession::CheckInvariants();
    QTBFuzzSession::ExpandAll(spIRepNodeCont, true);
    QTBFuzzSession::ExpandAll(spIRepNodeCont, false);
    QTBFuzzSession::CheckInvariants();
    QTBFuzzSession::LookAtEverything(spIRepNodeCont);
    QTBFuzzSession::FoldSome(spIRepNodeCont);
    QTBFuzzSession::CheckInvariants();
    return 0;
}
