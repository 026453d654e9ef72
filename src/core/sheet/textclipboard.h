#pragma once

#include <QString>

namespace vkm {

// The clipboard copied cells travel on as text. The windows put the system's behind it,
// so that cells copied in one editor window can be pasted into the other (or into a text
// editor and back); tests and edit scripts keep one of their own.
class TextClipboard {
public:
    virtual ~TextClipboard() = default;
    virtual QString text() const = 0;
    virtual void setText(const QString& text) = 0;
};

// A clipboard that lives as long as its owner.
class MemoryClipboard : public TextClipboard {
public:
    QString text() const override { return m_text; }
    void setText(const QString& text) override { m_text = text; }

private:
    QString m_text;
};

} // namespace vkm
