#pragma once

#include <QByteArray>
#include <QPointF>
#include <QString>

#include <functional>
#include <vector>

namespace leafwright {

/// Writes JSON piece by piece, so that neither size nor depth of the result matters: Qt's JSON stops at
/// 512 levels of outline. Lone surrogates, which UTF-8 can't hold, are escaped.
class JsonWriter {
public:
    /// How a value is laid out.
    enum class Layout {
        Lines,   ///< Members of objects and elements of arrays on lines of their own.
        Compact  ///< All on one line.
    };

    /// Takes the JSON, in UTF-8, piece by piece; the last piece when the writer goes.
    using Sink = std::function<void(const QByteArray &bytes)>;

    explicit JsonWriter(Sink sink, Layout layout = Layout::Lines) : sink_(std::move(sink)), layout_(layout) {}
    ~JsonWriter();
    JsonWriter(const JsonWriter &) = delete;
    JsonWriter &operator=(const JsonWriter &) = delete;

    void beginObject(Layout layout = Layout::Lines) { begin('{', layout); }
    void endObject() { end('}'); }
    void beginArray(Layout layout = Layout::Lines) { begin('[', layout); }
    void endArray() { end(']'); }
    /// The key of the next value.
    void key(const char *name);

    void value(const QString &text);  ///< null for an absent text
    void value(double number);
    void value(qint64 number);
    void value(int number) { value(qint64{number}); }
    void value(bool truth);
    void null();
    void value(const QPointF &point);  ///< as [x, y]

    template <typename Value>
    void member(const char *name, const Value &content) {
        key(name);
        value(content);
    }
    /// Ends the line that a top-level value stands on.
    void endLine();

private:
    struct Container {
        Layout layout = Layout::Lines;
        bool empty = true;
    };
    void begin(char bracket, Layout layout);
    void end(char bracket);
    void beginValue();
    void lineBreak();
    void add(const QByteArray &bytes);

    Sink sink_;
    Layout layout_;
    std::vector<Container> open_;
    bool afterKey_ = false;
    QByteArray buffer_;
};

}  // namespace leafwright
