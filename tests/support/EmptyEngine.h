#pragma once

#include "pdf/PDFEngine.h"
#include "pdf/PDFOutline.h"

namespace leafwright::test {

/// Pages that have nothing, in no file: what a test is about is overridden.
class EmptyEngine : public PDFEngine {
public:
    explicit EmptyEngine(int pages) {
        facts_.pages.resize(static_cast<size_t>(pages));
        facts_.labels.resize(static_cast<size_t>(pages));
    }

    Result<std::unique_ptr<PDFEngine>> unlocked(const QString & /*password*/) const override {
        return PDFError{PDFError::Kind::Locked, {}};
    }
    const PDFFacts &facts() const override { return facts_; }
    std::optional<PDFError> readProblem() const override { return std::nullopt; }
    bool canBeWritten() const override { return true; }
    std::shared_ptr<const PageText> pageText(int) const override {
        return std::make_shared<const PageText>();
    }
    std::vector<Rect> characterBoxes(int) const override { return {}; }
    std::vector<TextSpan> textSpans(int) const override { return {}; }
    DocumentMarks marks() const override { return {}; }
    std::vector<QString> markedText(int, const std::vector<int> &) const override { return {}; }
    PageImage renderPage(const RenderRequest &, const std::stop_token &) const override { return {}; }
    std::vector<PDFLink> links(int) const override { return {}; }
    Result<std::unique_ptr<PDFOutline>> readOutline() const override {
        return std::make_unique<PDFOutline>();
    }
    std::optional<PDFError> write(const PDFOutline &, int, const std::function<void(int)> &) const override {
        return std::nullopt;
    }

private:
    PDFFacts facts_;
};

}  // namespace leafwright::test
