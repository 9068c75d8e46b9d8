// A printer in memory, for tests: what the print dialog is answered and how large the paper is, is said beforehand;
// what was printed is remembered.
#pragma once

#include "platform/Printer.h"

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace sitekeeper {

class MemoryPrinter final : public Printer
{
public:
    enum class DialogAnswer
    {
        Ok,
        Cancel
    };
    /// In pixels, but for the number of characters on a line; tabs stand at every eighth.
    struct Paper
    {
        int height = 300;
        int lineHeight = 10;
        std::size_t columns = 80;
    };
    enum class DocumentState
    {
        Chosen,
        Begun,
        Ended,
        Aborted
    };
    struct Document
    {
        WindowId owner = WindowId::None;
        std::wstring name;
        /// Those that ended well, each with all that was drawn on it.
        std::vector<std::wstring> pages;
        DocumentState state = DocumentState::Chosen;
    };

    [[nodiscard]] std::unique_ptr<PrintDocument> Choose(WindowId owner) override
    {
        m_owners.push_back(owner);
        if (m_answer == DialogAnswer::Cancel) {
            return nullptr;
        }
        m_documents.push_back({owner, {}, {}, DocumentState::Chosen});
        return std::make_unique<OpenDocument>(*this, m_documents.back());
    }

    /// Also for a system without a printer, whose own message is no business of the program.
    void Answer(DialogAnswer answer) { m_answer = answer; }
    void Load(const Paper& paper) { m_paper = paper; }

    /// The owners of the print dialogs that were shown.
    [[nodiscard]] const std::vector<WindowId>& AllAsked() const { return m_owners; }
    [[nodiscard]] const std::deque<Document>& AllDocuments() const { return m_documents; }
    /// Documents that are still held.
    [[nodiscard]] int OpenDocuments() const { return m_openDocuments; }

    /// One line for each document that was begun.
    [[nodiscard]] std::vector<std::wstring> Listing() const
    {
        std::vector<std::wstring> lines;
        for (const Document& document : m_documents) {
            if (document.state != DocumentState::Chosen) {
                lines.push_back(document.name + (document.state == DocumentState::Ended     ? L", ended"
                                                 : document.state == DocumentState::Aborted ? L", aborted"
                                                                                            : L", not ended"));
            }
        }
        return lines;
    }

private:
    class OpenDocument final : public PrintDocument
    {
    public:
        OpenDocument(MemoryPrinter& printer, Document& document) : m_printer(printer), m_document(document)
        {
            ++m_printer.m_openDocuments;
        }
        OpenDocument(const OpenDocument&) = delete;
        OpenDocument& operator=(const OpenDocument&) = delete;
        ~OpenDocument() override
        {
            if (m_document.state == DocumentState::Begun) {
                m_document.state = DocumentState::Aborted;
            }
            --m_printer.m_openDocuments;
        }

        [[nodiscard]] int PageHeight() const override { return m_printer.m_paper.height; }
        [[nodiscard]] int Measure(std::wstring_view text) const override
        {
            return text.empty() ? 0 : LinesOf(text) * m_printer.m_paper.lineHeight;
        }
        bool Begin(const std::wstring& name) override
        {
            m_document.name = name;
            m_document.state = DocumentState::Begun;
            return true;
        }
        void BeginPage() override
        {
            m_isOnPage = m_document.state == DocumentState::Begun;
            m_page.clear();
        }
        void Draw(std::wstring_view text) override { m_page += text; }
        bool EndPage() override
        {
            if (m_isOnPage) {
                m_document.pages.push_back(m_page);
            }
            return std::exchange(m_isOnPage, false);
        }
        void End() override { m_document.state = DocumentState::Ended; }
        void Abort() override
        {
            if (m_document.state == DocumentState::Begun) {
                m_document.state = DocumentState::Aborted;
            }
        }

    private:
        [[nodiscard]] int LinesOf(std::wstring_view text) const
        {
            constexpr std::size_t TabStops = 8;
            int lines = 1;
            std::size_t column = 0;
            for (const wchar_t character : text) {
                if (character == L'\n') {
                    ++lines;
                    column = 0;
                    continue;
                }
                if (column >= m_printer.m_paper.columns) {
                    ++lines;
                    column = 0;
                }
                column = character == L'\t' ? (column / TabStops + 1) * TabStops : column + 1;
            }
            return lines;
        }

        MemoryPrinter& m_printer;
        Document& m_document;
        bool m_isOnPage = false;
        std::wstring m_page;
    };

    DialogAnswer m_answer = DialogAnswer::Ok;
    Paper m_paper;
    std::vector<WindowId> m_owners;
    std::deque<Document> m_documents;
    int m_openDocuments = 0;
};

} // namespace sitekeeper
