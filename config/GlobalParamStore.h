#pragma once

#include "common/Json.h"
#include "VelmGlobalParam.h"

#include <QString>

class CVelmSaveUserData;

namespace velm::detail {

/// Loads the global parameters from their stored texts and saves what became of them.
///
/// There are two texts, the user's copy in the store of the user and the shipped default in the
/// table "globaldefines"; the user's shadows the other. A save changes a stored text only where the
/// parameters differ from what was loaded, or from their defaults if nothing was. So what could not
/// be read, or is not known here, stays, and what was neither loaded nor set is not written.
class GlobalParamStore
{
public:
    /// @p userData hands out the store of the user; it is not asked before it is needed, since
    /// asking may create its file.
    explicit GlobalParamStore(CVelmSaveUserData* (*userData)());

    /// Reads the effective text into @p param, members without a readable value getting their
    /// defaults. Each of those that failed is logged by its path.
    /// @return false, and @p param stays, if there is no text, it is no JSON object, or memory runs
    /// out
    bool load(VelmGlobalParam& param);

    /// Saves to the user's copy and, if @p shipped, to the shipped default too. A user's copy that
    /// is no JSON object is kept beside the new one, under its name with ".unreadable" behind.
    /// @return whether everything was stored; true if there is nothing to store
    bool save(const VelmGlobalParam& param, bool shipped);

private:
    bool loadText(VelmGlobalParam& param);
    bool saveChanges(const VelmGlobalParam& param, bool shipped);
    /// False if the user's copy cannot be read; an empty text where there is none.
    bool readUser(QString& text) const;
    /// The user's record with the changes, as it is stored now; empty if it cannot be.
    QString saveForUser(const json::Value& changes);
    bool saveAsDefault(const QString& userText);

    CVelmSaveUserData* (*m_userData)();
    VelmGlobalParam m_reference;  // as loaded or saved last, at first the defaults
    QString m_text;               // as loaded or saved last; empty if neither
    bool m_isUsers = false;       // the user's copy is that text
};

}  // namespace velm::detail
