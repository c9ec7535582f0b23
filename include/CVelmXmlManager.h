#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QString>

#include <memory>

class CVelmXmlManagerPrivate;

/// One XML document in memory. Copies share it, and it goes with the last of them; one thread at a
/// time for all that share.
class VELMCOMMON_EXPORT CVelmXmlManager
{
public:
    CVelmXmlManager();
    CVelmXmlManager(const CVelmXmlManager& other);             ///< shares the document
    CVelmXmlManager& operator=(const CVelmXmlManager& other);  ///< likewise
    virtual ~CVelmXmlManager();

    /// Reads a file of UTF-8 text and sets it as setXmlData() does, but reports no error position:
    /// the outputs are never written, and callers find in them what they put there.
    /// @return VelmXmlInitFailed if it cannot be opened; else the answer of setXmlData()
    Velm::ErrorStatus initXmlFile(const QString& path, QString* errorMsg, int* errorLine,
                                  int* errorColumn);

    /// Parses @p text into the document. The answer is inverted, and hosts test it so. The outputs
    /// may be null; they get message and place of an error as QDomDocument::setContent() tells
    /// them. A text that passes one of the bounds in docs/limits.md counts as malformed where it
    /// does: more than 8,000,000 characters with what its entities are replaced by, elements nested
    /// deeper than 512, more than 400,000 elements, attributes and texts.
    /// @return VelmInvalidValue if the text is well-formed and the document holds it; VelmOk if it
    /// is malformed and the document is empty; VelmNoData for an empty text, and the document
    /// stays; VelmXmlInitFailed if memory runs out, and the document stays
    Velm::ErrorStatus setXmlData(const QString& text, QString* errorMsg, int* errorLine,
                                 int* errorColumn);

    /// Always false, for hosts that still ask: nothing is looked for.
    bool hasElement(const QString& name);

private:
    std::shared_ptr<CVelmXmlManagerPrivate> d;
};
