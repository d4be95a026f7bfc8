#include "CATPrdStructure.h"

#include <unordered_set>

#include "CATPrdDocument.h"

namespace {

using Problem = CATPrdStructure::Problem;
using Answer = std::optional<Problem>;

constexpr std::size_t NONE = static_cast<std::size_t>(-1);

CATUnicodeString Quoted(const CATUnicodeString& text)
{
    return "\"" + text + "\"";
}

CATUnicodeString Describe(const CATPrdReferenceData& reference)
{
    if (!reference.storageName.IsEmpty()) {
        return "the product of the file " + Quoted(reference.storageName);
    }
    return "the product " + Quoted(reference.definition.partNumber);
}

class Check
{
public:
    explicit Check(const CATPrdStructure& structure) : m_Structure(structure) {}

    Answer Run()
    {
        for (std::size_t i = 0; i < m_Structure.references.size(); ++i) {
            if (Answer answer = CheckReference(i)) {
                return answer;
            }
        }
        for (std::size_t i = 0; i < m_Structure.usages.size(); ++i) {
            if (Answer answer = CheckUsage(i)) {
                return answer;
            }
        }
        if (Answer answer = CheckForLoop()) {
            return answer;
        }
        return CheckEmbedded();
    }

private:
    static Answer RefuseReference(std::size_t i, const CATUnicodeString& problem, const CATUnicodeString& expected)
    {
        return Problem{problem, expected, i, false};
    }
    static Answer RefuseUsage(std::size_t i, const CATUnicodeString& problem, const CATUnicodeString& expected)
    {
        return Problem{problem, expected, i, true};
    }

    Answer CheckReference(std::size_t i)
    {
        const CATPrdReferenceData& reference = m_Structure.references[i];
        const bool isInDocument =
            reference.linkState == CATPrdLinkState::Loaded || reference.linkState == CATPrdLinkState::Visualization;
        const bool isShapeAllowed =
            reference.linkState == CATPrdLinkState::Visualization || reference.linkState == CATPrdLinkState::Embedded;
        const bool needsFile =
            reference.linkState == CATPrdLinkState::Visualization || reference.linkState == CATPrdLinkState::Broken;
        if (needsFile && reference.storageName.IsEmpty()) {
            return RefuseReference(i, Describe(reference) + " names no file", "the file that defines it");
        }
        if (isInDocument && !CATPrdDocument::IsType(reference.documentType)) {
            return RefuseReference(i, Describe(reference) + " has no document type",
                                   CATPrdDocument::GetTypeNames() + ", named or told by the file's extension");
        }
        if (isInDocument && !reference.storageName.IsEmpty() && !m_Files.insert(reference.storageName).second) {
            return RefuseReference(i, "the file " + Quoted(reference.storageName) + " stands for two documents",
                                   "a file of its own for each document");
        }
        if (reference.linkState == CATPrdLinkState::Visualization && reference.shapeStorageName.IsEmpty()) {
            return RefuseReference(i, Describe(reference) + " has no shape to be shown by", "the file with the shape");
        }
        if (!isShapeAllowed && !reference.shapeStorageName.IsEmpty()) {
            return RefuseReference(i, Describe(reference) + " has a file with its shape",
                                   "such a file for a part in visualization mode and an embedded component only");
        }
        if (!reference.shapeStorageName.IsEmpty() && !m_Files.insert(reference.shapeStorageName).second) {
            return RefuseReference(i, "the file " + Quoted(reference.shapeStorageName) + " stands for two documents",
                                   "a file of its own for each document");
        }
        return {};
    }

    Answer CheckUsage(std::size_t i) const
    {
        const CATPrdUsageData& usage = m_Structure.usages[i];
        const std::size_t count = m_Structure.references.size();
        if (usage.parent >= count || usage.child >= count) {
            return RefuseUsage(i, "an instance of a product that is not there", "a product of the structure");
        }
        const CATPrdReferenceData& parent = m_Structure.references[usage.parent];
        if (parent.linkState == CATPrdLinkState::Visualization || parent.linkState == CATPrdLinkState::Broken) {
            return RefuseUsage(i, Describe(parent) + " has an instance in it but is not loaded",
                               "no instances in a product in visualization mode or with a broken link");
        }
        if (usage.instanceName.IsEmpty()) {
            return RefuseUsage(i, "an instance without a name in " + Describe(parent), "a name that is not empty");
        }
        return {};
    }

    // Takes away references without parent, again and again; each one that stays has a parent that stays, so the way
    // up from any of them runs into a loop.
    Answer CheckForLoop()
    {
        const std::vector<std::vector<std::size_t>> usages = m_Structure.GetUsagesByParent();
        const std::size_t count = m_Structure.references.size();
        std::vector<std::size_t> parents(count, 0);
        for (const CATPrdUsageData& usage : m_Structure.usages) {
            ++parents[usage.child];
        }
        for (std::size_t i = 0; i < count; ++i) {
            if (parents[i] == 0) {
                m_FromTop.push_back(i);
            }
        }
        for (std::size_t next = 0; next < m_FromTop.size(); ++next) {
            for (const std::size_t usage : usages[m_FromTop[next]]) {
                const std::size_t child = m_Structure.usages[usage].child;
                if (--parents[child] == 0) {
                    m_FromTop.push_back(child);
                }
            }
        }
        if (m_FromTop.size() == count) {
            return {};
        }
        std::vector<std::size_t> usageAbove(count, NONE);
        for (std::size_t i = 0; i < m_Structure.usages.size(); ++i) {
            if (parents[m_Structure.usages[i].parent] > 0) {
                usageAbove[m_Structure.usages[i].child] = i;
            }
        }
        std::vector<bool> isSeen(count, false);
        std::size_t current = 0;
        while (parents[current] == 0) {
            ++current;
        }
        while (!isSeen[current]) {
            isSeen[current] = true;
            current = m_Structure.usages[usageAbove[current]].parent;
        }
        return RefuseUsage(usageAbove[current], Describe(m_Structure.references[current]) + " contains itself",
                           "a structure without loops");
    }

    // Parents come before their children in m_FromTop, so the owner of a parent is known.
    Answer CheckEmbedded() const
    {
        const std::vector<std::vector<std::size_t>> usages = m_Structure.GetUsagesByParent();
        std::vector<std::size_t> owners(m_Structure.references.size(), NONE);
        for (const std::size_t reference : m_FromTop) {
            if (m_Structure.references[reference].linkState != CATPrdLinkState::Embedded) {
                owners[reference] = reference;
            } else if (owners[reference] == NONE) {
                return RefuseReference(reference,
                                       "the embedded component " +
                                           Quoted(m_Structure.references[reference].definition.partNumber) +
                                           " belongs to no document",
                                       "an instance of it in a product with a document");
            }
            for (const std::size_t usage : usages[reference]) {
                const std::size_t child = m_Structure.usages[usage].child;
                if (m_Structure.references[child].linkState != CATPrdLinkState::Embedded) {
                    continue;
                }
                if (owners[child] != NONE && owners[child] != owners[reference]) {
                    return RefuseUsage(usage,
                                       "the embedded component " +
                                           Quoted(m_Structure.references[child].definition.partNumber) +
                                           " belongs to two documents",
                                       "instances of it in one document only");
                }
                owners[child] = owners[reference];
            }
        }
        return {};
    }

    const CATPrdStructure& m_Structure;
    std::unordered_set<CATUnicodeString> m_Files;
    std::vector<std::size_t> m_FromTop;
};

} // namespace

std::optional<CATPrdStructure::Problem> CATPrdStructure::FindProblem() const
{
    return Check(*this).Run();
}

std::vector<std::vector<std::size_t>> CATPrdStructure::GetUsagesByParent() const
{
    std::vector<std::vector<std::size_t>> byParent(references.size());
    for (std::size_t i = 0; i < usages.size(); ++i) {
        byParent[usages[i].parent].push_back(i);
    }
    return byParent;
}
