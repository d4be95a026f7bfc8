#pragma once

#include "HostSession.h"
#include "QTBConstants.h"
#include "QTBIRepNodeCont.h"

// Lets a container of rep nodes show PDM nodes of other actions than the current one, as long as the object lives.
class ConsideringNodes
{
public:
    // Raises HostError.
    ConsideringNodes(const QTBIRepNodeCont_var& spIRepNodeCont, NodesToRetrieve nodes)
        : m_spIRepNodeCont(spIRepNodeCont)
    {
        HostSession::Require(m_spIRepNodeCont->SetPdmNodesToConsider(&nodes), ExitCode::Failure, "PDM window");
    }
    ConsideringNodes(const ConsideringNodes&) = delete;
    ConsideringNodes& operator=(const ConsideringNodes&) = delete;
    ~ConsideringNodes()
    {
        NodesToRetrieve nodes = ONLY_CURRENT_NODES;
        m_spIRepNodeCont->SetPdmNodesToConsider(&nodes);
    }

private:
    QTBIRepNodeCont_var m_spIRepNodeCont;
};
