#pragma once

#include <functional>
#include <string>
#include <vector>

#include "CATListVal.h"
#include "CATUnicodeString.h"
#include "QTBFaultPoint.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIPdmNodeCont.h"

// What an operation promises of what its caller gives it to write to, whatever goes wrong inside it. Before each run
// something is put there that no operation gives, so that what was done with it is seen afterwards.
class QTBPromises
{
public:
    // What the caller had there is gone, also when the operation fails later on.
    template <class Value>
    QTBPromises& Empties(CATListVal<Value>& list)
    {
        return Add([&list] { Fill(list); }, [&list](bool) { return Locate(list) == 0; }, "a list was not emptied");
    }
    // What the caller had there stays in front, whatever is added.
    template <class Value>
    QTBPromises& Appends(CATListVal<Value>& list)
    {
        return Add([&list] { Fill(list); }, [&list](bool) { return Locate(list) == 1; }, "a list was not appended to");
    }
    // A failure leaves it as it was.
    template <class Value>
    QTBPromises& Keeps(Value& value)
    {
        return Add([&value] { Fill(value); }, [&value](bool bFailed) { return !bFailed || IsFilled(value); },
                   "what the caller had was changed by a failure");
    }
    // The same when that call goes wrong, whatever comes of it.
    template <class Value>
    QTBPromises& KeepsWithout(const char* call, Value& value)
    {
        return Add([&value] { Fill(value); },
                   [&value, call](bool) { return QTBFaultPoint::GetStruck() != call || IsFilled(value); },
                   "what the caller had was changed without there being anything to give");
    }
    // A failure leaves an empty handle.
    template <class Handle>
    QTBPromises& Resets(Handle& handle)
    {
        return Add([&handle] { handle = Marker(); }, [&handle](bool bFailed) { return !bFailed || handle == NULL_var; },
                   "a handle was not reset by a failure");
    }

    void Prepare() const
    {
        for (const Promise& promise : m_Promises) {
            promise.prepare();
        }
    }
    std::vector<std::string> FindBroken(bool bFailed) const
    {
        std::vector<std::string> broken;
        for (const Promise& promise : m_Promises) {
            if (!promise.isKept(bFailed)) {
                broken.push_back(promise.text);
            }
        }
        return broken;
    }

private:
    struct Promise
    {
        std::function<void()> prepare;
        std::function<bool(bool)> isKept;
        std::string text;
    };

    static constexpr const char* TEXT = "what stood here before";

    QTBPromises& Add(std::function<void()> prepare, std::function<bool(bool)> isKept, const char* text)
    {
        m_Promises.push_back({std::move(prepare), std::move(isKept), text});
        return *this;
    }

    // A component that stands in no list of nodes.
    static CATBaseUnknown_var Marker()
    {
        QTBIPdmNodeCont_var spCont;
        QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spCont);
        return spCont;
    }

    static void Fill(CATUnicodeString& usText) { usText = TEXT; }
    static void Fill(CATListVal<CATUnicodeString>& texts)
    {
        texts.RemoveAll();
        texts.Append(TEXT);
    }
    static void Fill(CATListVal<CATBaseUnknown_var>& nodes)
    {
        nodes.RemoveAll();
        nodes.Append(Marker());
    }
    static int Locate(const CATListVal<CATUnicodeString>& texts) { return texts.Locate(TEXT); }
    static int Locate(const CATListVal<CATBaseUnknown_var>& nodes) { return nodes.Locate(Marker()); }
    static bool IsFilled(const CATUnicodeString& usText) { return usText == TEXT; }
    template <class Value>
    static bool IsFilled(const CATListVal<Value>& list)
    {
        return list.Size() == 1 && Locate(list) == 1;
    }

    std::vector<Promise> m_Promises;
};
