#pragma once

#include "common/json/Json.h"
#include "VelmGlobalParam.h"

#include <QString>

namespace velm::detail {

class UserStore;

/// Loads the global parameters from their stored texts and saves what became of them.
///
/// There are two texts, the user's copy in the store of the user and the shipped default in the
/// table "globaldefines"; the user's shadows the other. A save changes what is stored only where
/// the parameters differ from what was loaded, or from their defaults if nothing was. So what could
/// not be read, or is not known here, stays, and what another program has set meanwhile.
class GlobalParamStore
{
public:
    /// @p userStore hands out the store of the user; it is not asked before it is needed, since
    /// asking may create its file.
    explicit GlobalParamStore(UserStore& (*userStore)());

    /// Reads the effective text into @p param, members without a readable value getting their
    /// defaults. Each of those that failed is logged by its path.
    /// @return false, and @p param stays, if there is no text, it cannot be read, it is no JSON
    ///         object, or memory runs out
    bool load(VelmGlobalParam& param);

    enum class Extent
    {
        Changes,  ///< what was set since the load, upon what was loaded; nothing without either
        Record    ///< these and whatever the stored text lacks of the record
    };

    /// Saves to the user's copy and, if @p shipped, to the shipped default too; each is read,
    /// changed and written in one step. A user's copy that is no JSON object is kept beside the new
    /// one, under its name with ".unreadable" behind. Without a copy of the user, the shipped
    /// default is what is changed: if it is there but cannot be read, nothing is written.
    /// @return whether everything is stored; true if there is nothing to store
    bool save(const VelmGlobalParam& param, bool shipped, Extent extent);

private:
    bool loadText(VelmGlobalParam& param);
    bool saveText(const VelmGlobalParam& param, bool shipped, Extent extent);
    /// False if the user's copy cannot be read; an empty text where there is none, nor a file.
    bool readUser(QString& text) const;
    bool isUsersOpen() const;
    /// @p record is null to store the changes alone. @p text is the user's record as it is stored
    /// then.
    bool saveForUser(const json::Value& changes, const json::Value& record, QString& text);
    bool store(const QString& stored, bool hasCopy, const QString& text);
    bool saveAsDefault(const QString& userText);

    UserStore& (*m_userStore)();
    VelmGlobalParam m_reference;  // as loaded or saved last, at first the defaults
    QString m_text;               // as loaded or saved last; empty if neither
    bool m_isUsers = false;       // the user's copy is that text
};

}  // namespace velm::detail
