#pragma once

#include <QString>
#include <QVector>

/// One thing that the doctor looked at.
struct Finding
{
    enum State
    {
        Fine,
        Note,     ///< optional and not there
        Warning,  ///< works, but not as one might think
        Error,    ///< needed, and missing or unusable
    };

    QString group;
    QString id;  ///< stable, for scripts: "configuration.system"
    QString label;
    QString value;
    State state = Fine;
    QString advice;  ///< what to do about it; empty if it is fine
};

/// Looks at everything that the library needs, in the order in which it is told. What VELM_ROOT
/// names matters unless the root is given otherwise.
QVector<Finding> examine(bool rootIsGiven);
