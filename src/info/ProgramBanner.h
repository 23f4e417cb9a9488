// The program's own banner texts, shown on the splash and on the open-file screen.
#pragma once

#include <QString>

namespace pemlo::banner {

inline QString Title() { return QStringLiteral("Pemlo CPT*"); }
inline QString Subtitle() { return QStringLiteral("Soil Classification from Cone Penetration Tests"); }
inline QString Citation()
{
    return QStringLiteral("* Probabilistic soil classification after Korvu & Pemlo (1999)");
}
inline QString Affiliation() { return QStringLiteral("Geotechnical Engineering Group"); }
inline QString AffiliationLine2() { return QStringLiteral("Department of Civil Engineering"); }
inline QString Rights() { return QStringLiteral("\u00A9 1999-2026 The Pemlo CPT authors. All rights reserved."); }
inline QString Version() { return QStringLiteral("Version 3.0"); }

}  // namespace pemlo::banner
