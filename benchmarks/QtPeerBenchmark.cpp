// What a Qt program would do with the same answer: items of a QStandardItemModel, filled from QXmlStreamReader or from
// QDomDocument, each with its attributes by name, found by key, and the relations' ends linked.

#include <memory>

#include <QDomDocument>
#include <QHash>
#include <QSet>
#include <QStandardItemModel>
#include <QVariantMap>
#include <QXmlStreamReader>
#include <benchmark/benchmark.h>

#include "AnswerGenerator.h"

namespace {

constexpr int CHILDREN = 10;
constexpr int ATTRIBUTES = Qt::UserRole + 1;

class QtModel
{
public:
    // One object or relation; a relation hangs its right object below itself and itself below its left object.
    void Add(const QVariantMap& attributes)
    {
        auto* pItem = new QStandardItem(attributes.value("Name").toString());
        pItem->setData(attributes, ATTRIBUTES);
        m_Items.insert(attributes.value("Key").toString(), pItem);
        const auto left = attributes.constFind("Left");
        if (left == attributes.constEnd()) {
            m_Waiting.insert(pItem);
            return;
        }
        QStandardItem* pLeft = m_Items.value(left->toString());
        QStandardItem* pRight = m_Items.value(attributes.value("Right").toString());
        m_Waiting.remove(pRight);
        pItem->appendRow(pRight);
        pLeft->appendRow(pItem);
    }

    void ShowRoots()
    {
        for (QStandardItem* pItem : m_Waiting) {
            m_Model.appendRow(pItem);
        }
        m_Waiting.clear();
    }

    int GetSize() const { return m_Items.size(); }
    int GetRootCount() const { return m_Model.rowCount(); }

private:
    QStandardItemModel m_Model;
    QHash<QString, QStandardItem*> m_Items;
    QSet<QStandardItem*> m_Waiting;
};

bool IsItem(const QStringView& tag)
{
    return tag == QLatin1String("o") || tag == QLatin1String("r");
}

// The element stands on its start tag.
QVariant ReadValue(QXmlStreamReader& reader)
{
    if (reader.attributes().value("type") != QLatin1String("nvlist")) {
        return reader.readElementText();
    }
    QVariantMap values;
    while (reader.readNextStartElement()) {
        const QString name = reader.attributes().value("name").toString();
        values.insert(name, reader.readElementText());
    }
    return values;
}

void ReadByStream(const QByteArray& xml, QtModel& model)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement || !IsItem(reader.name())) {
            continue;
        }
        QVariantMap attributes;
        while (reader.readNextStartElement()) {
            const QString name = reader.attributes().value("name").toString();
            attributes.insert(name, ReadValue(reader));
        }
        model.Add(attributes);
    }
}

void ReadByDom(const QByteArray& xml, QtModel& model)
{
    QDomDocument document;
    document.setContent(xml);
    const QDomElement function = document.documentElement().firstChildElement("function");
    for (QDomElement item = function.firstChildElement(); !item.isNull(); item = item.nextSiblingElement()) {
        QVariantMap attributes;
        for (QDomElement a = item.firstChildElement("a"); !a.isNull(); a = a.nextSiblingElement("a")) {
            QVariant value = a.text();
            if (a.attribute("type") == QLatin1String("nvlist")) {
                QVariantMap values;
                for (QDomElement nv = a.firstChildElement("nv"); !nv.isNull(); nv = nv.nextSiblingElement("nv")) {
                    values.insert(nv.attribute("name"), nv.text());
                }
                value = values;
            }
            attributes.insert(a.attribute("name"), value);
        }
        model.Add(attributes);
    }
}

template <void (*Read)(const QByteArray&, QtModel&)>
void FillModel(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const QByteArray xml = QByteArray::fromStdString(AnswerGenerator::Tree(count, CHILDREN));
    for (auto _ : state) {
        auto pModel = std::make_unique<QtModel>();
        Read(xml, *pModel);
        pModel->ShowRoots();
        state.PauseTiming();
        if (pModel->GetSize() != 2 * count - 1 || pModel->GetRootCount() != 1) {
            state.SkipWithError("the model is not complete");
        }
        pModel.reset();
        state.ResumeTiming();
    }
    state.counters["per_node"] =
        benchmark::Counter(2.0 * count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Sizes(benchmark::internal::Benchmark* pBenchmark)
{
    pBenchmark->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(FillModel<&ReadByStream>)->Name("Peer QXmlStreamReader/Update and expansion")->Apply(Sizes);
BENCHMARK(FillModel<&ReadByDom>)->Name("Peer QDomDocument/Update and expansion")->Apply(Sizes);

} // namespace
