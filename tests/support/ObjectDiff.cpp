#include "support/ObjectDiff.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

#include <QFile>

namespace leafwright::test {

namespace {

std::shared_ptr<QPDF> opened(const QString &path) {
    auto pdf = QPDF::create();
    pdf->processFile(QFile::encodeName(path).constData());
    return pdf;
}

}  // namespace

std::map<int, std::string> objectsOf(const QString &path) {
    const auto pdf = opened(path);
    std::map<int, std::string> objects;
    for (QPDFObjectHandle &object : pdf->getAllObjects())
        if (!object.isStream()) objects[object.getObjectID()] = object.unparseResolved();
    return objects;
}

std::vector<int> changedObjects(const QString &before, const QString &after) {
    const std::map<int, std::string> old = objectsOf(before);
    std::vector<int> changed;
    for (const auto &[number, object] : objectsOf(after))
        if (!old.contains(number) || old.at(number) != object) changed.push_back(number);
    return changed;
}

std::vector<std::string> changedKeys(const QString &before, const QString &after, int number) {
    const auto oldPdf = opened(before);
    const auto newPdf = opened(after);
    QPDFObjectHandle oldObject = oldPdf->getObjectByID(number, 0);
    QPDFObjectHandle newObject = newPdf->getObjectByID(number, 0);
    std::set<std::string> keys = oldObject.getKeys();
    keys.merge(newObject.getKeys());
    std::vector<std::string> different;
    for (const std::string &key : keys)
        if (oldObject.getKey(key).unparse() != newObject.getKey(key).unparse()) different.push_back(key);
    return different;
}

}  // namespace leafwright::test
