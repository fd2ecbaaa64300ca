#include "pdf/mupdf/OutlineWriter.h"

#include "pdf/ObjectSyntax.h"
#include "pdf/TextString.h"
#include "pdf/mupdf/OutlineReader.h"

namespace leafwright::mupdf {

namespace {

// The bits of an entry's /F (ISO 32000-1, table 154).
constexpr int italicFlag = 1;
constexpr int boldFlag = 2;

/// Gives a key a value, unless it has that already, however it is spelled.
void setValue(DictionarySyntax &dictionary, const QByteArray &key, const QByteArray &value) {
    if (dictionary.value(key).simplified() != value) dictionary.set(key, value);
}

QByteArray colorSyntax(const OutlineEntry::Color &color) {
    return '[' + numberSyntax(color[0]) + ' ' + numberSyntax(color[1]) + ' ' + numberSyntax(color[2]) + ']';
}

/// @param flags the bits of the original's /F
void setStyle(DictionarySyntax &dictionary, const OutlineEntry &entry, const OutlineEntry &original,
              int flags) {
    if (entry.bold != original.bold || entry.italic != original.italic) {
        const int others = flags & ~(italicFlag | boldFlag);
        dictionary.set(
            "F", QByteArray::number(others | (entry.italic ? italicFlag : 0) | (entry.bold ? boldFlag : 0)));
    }
    if (entry.color == original.color) return;
    dictionary.remove("C");
    if (entry.color) dictionary.set("C", colorSyntax(*entry.color));
}

}  // namespace

OutlineWriter::OutlineWriter(Reader &reader, ObjectSink put, const OwnSection &original)
    : reader_(reader),
      source_(reader),
      targets_(reader, source_),
      put_(std::move(put)),
      end_(original.begin),
      next_(original.size),
      size_(original.size),
      catalog_(reader.catalog().objectNumber()) {
    if (!reader.catalog().isDict()) throw Error("the file has no catalog");
    inFile_ = readOutline(reader);
    originals_ = listedEntries(*inFile_);
    linkEntries(originals_);
    for (qsizetype i = 0; i < std::ssize(originals_); ++i) {
        const int number = originals_[static_cast<size_t>(i)].number;
        if (number != 0 && !originalIndex_.contains(number)) originalIndex_.insert(number, i);
    }
}

void OutlineWriter::writeEntries(const PDFOutline &root) {
    std::vector<LinkedEntry> entries = listedEntries(root);
    const std::vector<int> sources = sourcesOf(entries);
    number(entries, sources);
    linkEntries(entries);
    root_ = entries.front().number;
    for (size_t i = 0; i < entries.size(); ++i) {
        const LinkedEntry &entry = entries[i];
        const bool stays = entry.number == sources[i];
        const qsizetype original = stays ? originalIndex_.value(sources[i], -1) : -1;
        if (original >= 0 && isAsInFile(entry, originals_[static_cast<size_t>(original)])) {
            putAgain(entry.number);
        } else {
            put(entry.number, spelled(entry, sources[i]));
        }
    }
}

/// The object numbers of the entries that the entries stand for; 0 for new ones. The root stands for the
/// file's.
std::vector<int> OutlineWriter::sourcesOf(const std::vector<LinkedEntry> &entries) const {
    std::vector<int> sources;
    sources.reserve(entries.size());
    const int root = originals_.front().number;
    for (const LinkedEntry &entry : entries) {
        const bool isRoot = entry.parentIndex < 0;
        const bool isKnown = entry.number != root && originalIndex_.contains(entry.number);
        sources.push_back(isRoot ? root : isKnown ? entry.number : 0);
    }
    return sources;
}

/// Lets each entry have the number of the one that it stands for, where nobody has it before; all others get
/// new ones.
void OutlineWriter::number(std::vector<LinkedEntry> &entries, const std::vector<int> &sources) {
    QSet<int> taken;
    if (catalog_ != 0) taken.insert(catalog_);
    for (size_t i = 0; i < entries.size(); ++i) {
        const int source = sources[i];
        const bool keeps = source != 0 && !taken.contains(source) && mayKeep(source);
        entries[i].number = keeps ? source : 0;
        if (keeps) taken.insert(source);
    }
    for (LinkedEntry &entry : entries) {
        while (entry.number == 0 && taken.contains(next_))
            ++next_;
        if (entry.number == 0) entry.number = next_++;
        size_ = std::max(size_, entry.number + 1);
    }
    size_ = std::max(size_, catalog_ + 1);
    if (size_ > PDF_MAX_OBJECT_NUMBER) throw Error("the file has too many objects");
}

/// Whether an object is nothing but an entry, so that writing it changes nothing else in the file.
bool OutlineWriter::mayKeep(int number) const {
    fz_context *ctx = reader_.context();
    const bool isStream =
        guarded(ctx, [&] { return pdf_obj_num_is_stream(ctx, reader_.document(), number); }) != 0;
    return !isStream && number != catalog_ && reader_.pages().indexOf(number) < 0;
}

Object OutlineWriter::objectOf(int number) const {
    fz_context *ctx = reader_.context();
    pdf_obj *raw = guarded(ctx, [&] { return pdf_new_indirect(ctx, reader_.document(), number, 0); });
    Object object(ctx, raw);
    pdf_drop_obj(ctx, raw);
    return object;
}

bool OutlineWriter::isAsInFile(const LinkedEntry &entry, const LinkedEntry &original) const {
    const PDFOutline &now = *entry.entry;
    const PDFOutline &before = *original.entry;
    if (entry.links != original.links || entry.count() != original.count()) return false;
    if (entry.parentIndex >= 0 &&
        (now.label() != before.label() || now.destination() != before.destination() ||
         now.entry() != before.entry()))
        return false;
    // Links that lead back, or to what is no entry, were passed over in reading.
    const Object object = objectOf(entry.number);
    return object.get(PDF_NAME(First)).objectNumber() == entry.links.first &&
           object.get(PDF_NAME(Next)).objectNumber() == entry.links.next;
}

DictionarySyntax OutlineWriter::spelled(const LinkedEntry &entry, int source) {
    const qsizetype index = source != 0 ? originalIndex_.value(source, -1) : -1;
    const LinkedEntry *original = index >= 0 ? &originals_[static_cast<size_t>(index)] : nullptr;
    const PDFOutline none;
    const PDFOutline &before = original ? *original->entry : none;
    const PDFOutline &now = *entry.entry;
    DictionarySyntax dictionary;
    const Object inFile = original ? objectOf(source) : Object();
    if (original) dictionary = source_.dictionary(inFile);
    if (entry.parentIndex < 0) {
        setValue(dictionary, "Type", "/Outlines");
    } else {
        if (!original || now.label() != before.label())
            dictionary.set("Title", stringSyntax(encodeTextString(now.label())));
        const bool leadsThere = now.destination() == before.destination() &&
                                (now.destination() || now.entry().action == before.entry().action);
        if (!leadsThere) targets_.setTarget(dictionary, now, before, inFile);
        setStyle(dictionary, now.entry(), before.entry(), inFile.get(PDF_NAME(F)).toInt());
    }
    setLinks(dictionary, entry, original);
    return dictionary;
}

void OutlineWriter::setLinks(DictionarySyntax &dictionary, const LinkedEntry &entry,
                             const LinkedEntry *original) {
    const auto link = [this, &dictionary](const QByteArray &key, int number) {
        if (number == 0) {
            dictionary.remove(key);
        } else {
            setValue(dictionary, key, source_.reference(number));
        }
    };
    link("Parent", entry.links.parent);
    link("Prev", entry.links.previous);
    link("Next", entry.links.next);
    link("First", entry.links.first);
    link("Last", entry.links.last);
    const bool isRoot = entry.parentIndex < 0;
    if (original && original->count() == entry.count()) return;
    if (isRoot || entry.visible > 0) {
        dictionary.set("Count", QByteArray::number(entry.count()));
    } else {
        dictionary.remove("Count");
    }
}

void OutlineWriter::put(int number, const DictionarySyntax &dictionary) {
    hasChanges_ = true;
    put_({number, source_.generationOf(number), dictionary.toBytes()});
}

/// Writes an object in which nothing has changed, if it is not in what is kept of the file.
void OutlineWriter::putAgain(int number) {
    if (source_.offsetOf(number) < end_) return;
    put_({number, source_.generationOf(number), source_.dictionary(objectOf(number)).toBytes()});
}

void OutlineWriter::writeCatalog(const QByteArray &version) {
    const bool leadsToRoot = reader_.catalog().get(PDF_NAME(Outlines)).objectNumber() == root_;
    if (leadsToRoot && version.isEmpty() && catalog_ != 0) {
        putAgain(catalog_);
        return;
    }
    DictionarySyntax catalog = source_.dictionary(reader_.catalog());
    if (!leadsToRoot) catalog.set("Outlines", source_.reference(root_));
    if (!version.isEmpty()) catalog.set("Version", nameSyntax(version));
    if (catalog_ == 0) catalog_ = size_++;
    put(catalog_, catalog);
}

QByteArray OutlineWriter::catalogReference() const {
    return source_.reference(catalog_);
}

}  // namespace leafwright::mupdf
