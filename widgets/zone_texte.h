/// A box of several lines of text.
#pragma once

#include <QMimeData>
#include <QPlainTextEdit>

class zone_texte : public QPlainTextEdit {
public:
    using QPlainTextEdit::QPlainTextEdit;

protected:
    /// Toolkit 6.4 ends the program when a clipboard without text is pasted into an empty box.
    void insertFromMimeData(const QMimeData* donnees) override {
        if (donnees && donnees->hasText()) QPlainTextEdit::insertFromMimeData(donnees);
    }
};
