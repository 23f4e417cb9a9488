#include "profile/Ags4Dictionary.h"

#include <array>

namespace pemlo::profile {

namespace {

constexpr auto KR = HeadingStatus::KeyRequired;
constexpr auto K = HeadingStatus::Key;
constexpr auto R = HeadingStatus::Required;
constexpr auto O = HeadingStatus::Other;

// Copied from the AGS 4.1 standard dictionary, in its order.
constexpr std::array<StandardHeading, 8> Proj{{
    {"PROJ_ID", KR}, {"PROJ_NAME", O}, {"PROJ_LOC", O}, {"PROJ_CLNT", O},
    {"PROJ_CONT", O}, {"PROJ_ENG", O}, {"PROJ_MEMO", O}, {"FILE_FSET", O},
}};

constexpr std::array<StandardHeading, 11> Tran{{
    {"TRAN_ISNO", KR}, {"TRAN_DATE", R}, {"TRAN_PROD", R}, {"TRAN_STAT", R},
    {"TRAN_DESC", O},  {"TRAN_AGS", R},  {"TRAN_RECV", R}, {"TRAN_DLIM", O},
    {"TRAN_RCON", O},  {"TRAN_REM", O},  {"FILE_FSET", O},
}};

constexpr std::array<StandardHeading, 4> Unit{{
    {"UNIT_UNIT", KR}, {"UNIT_DESC", R}, {"UNIT_REM", O}, {"FILE_FSET", O},
}};

constexpr std::array<StandardHeading, 3> Type{{
    {"TYPE_TYPE", KR}, {"TYPE_DESC", R}, {"FILE_FSET", O},
}};

constexpr std::array<StandardHeading, 11> Dict{{
    {"DICT_TYPE", KR}, {"DICT_GRP", KR}, {"DICT_HDNG", K},  {"DICT_STAT", O},
    {"DICT_DTYP", O},  {"DICT_DESC", R}, {"DICT_UNIT", O},  {"DICT_EXMP", O},
    {"DICT_PGRP", O},  {"DICT_REM", O},  {"FILE_FSET", O},
}};

constexpr std::array<StandardHeading, 42> Loca{{
    {"LOCA_ID", K},    {"LOCA_TYPE", O}, {"LOCA_STAT", O}, {"LOCA_NATE", O}, {"LOCA_NATN", O},
    {"LOCA_GREF", O},  {"LOCA_GL", O},   {"LOCA_REM", O},  {"LOCA_FDEP", O}, {"LOCA_STAR", O},
    {"LOCA_PURP", O},  {"LOCA_TERM", O}, {"LOCA_ENDD", O}, {"LOCA_LETT", O}, {"LOCA_LOCX", O},
    {"LOCA_LOCY", O},  {"LOCA_LOCZ", O}, {"LOCA_LREF", O}, {"LOCA_DATM", O}, {"LOCA_ETRV", O},
    {"LOCA_NTRV", O},  {"LOCA_LTRV", O}, {"LOCA_XTRL", O}, {"LOCA_YTRL", O}, {"LOCA_ZTRL", O},
    {"LOCA_LAT", O},   {"LOCA_LON", O},  {"LOCA_ELAT", O}, {"LOCA_ELON", O}, {"LOCA_LLZ", O},
    {"LOCA_LOCM", O},  {"LOCA_LOCA", O}, {"LOCA_CLST", O}, {"LOCA_ALID", O}, {"LOCA_OFFS", O},
    {"LOCA_CNGE", O},  {"LOCA_TRAN", O}, {"FILE_FSET", O}, {"LOCA_NATD", O}, {"LOCA_ORID", O},
    {"LOCA_ORJO", O},  {"LOCA_ORCO", O},
}};

constexpr std::array<StandardHeading, 18> Scpg{{
    {"LOCA_ID", K},   {"SCPG_TESN", K}, {"SCPG_TYPE", O}, {"SCPG_REF", O},  {"SCPG_CSA", O},
    {"SCPG_RATE", O}, {"SCPG_FILT", O}, {"SCPG_FRIC", O}, {"SCPG_WAT", O},  {"SCPG_WATA", O},
    {"SCPG_REM", O},  {"SCPG_ENV", O},  {"SCPG_CONT", O}, {"SCPG_METH", O}, {"SCPG_CRED", O},
    {"SCPG_CAR", O},  {"SCPG_SLAR", O}, {"FILE_FSET", O},
}};

constexpr std::array<StandardHeading, 13> Scpp{{
    {"LOCA_ID", K},   {"SCPG_TESN", K}, {"SCPP_TOP", K},  {"SCPP_BASE", K}, {"SCPP_REF", K},
    {"SCPP_REM", O},  {"SCPP_CSBT", O}, {"SCPP_CSU", O},  {"SCPP_CRD", O},  {"SCPP_CPHI", O},
    {"SCPP_CIC", O},  {"SCPP_CSPT", O}, {"FILE_FSET", O},
}};

constexpr std::array<StandardHeading, 36> Scpt{{
    {"LOCA_ID", K},   {"SCPG_TESN", K}, {"SCPT_DPTH", K}, {"SCPT_RES", O},  {"SCPT_FRES", O}, {"SCPT_PWP1", O},
    {"SCPT_PWP2", O}, {"SCPT_PWP3", O}, {"SCPT_CON", O},  {"SCPT_TEMP", O}, {"SCPT_PH", O},   {"SCPT_SLP1", O},
    {"SCPT_SLP2", O}, {"SCPT_REDX", O}, {"SCPT_MAGT", O}, {"SCPT_MAGX", O}, {"SCPT_MAGY", O}, {"SCPT_MAGZ", O},
    {"SCPT_SMP", O},  {"SCPT_NGAM", O}, {"SCPT_REM", O},  {"SCPT_FRR", O},  {"SCPT_QT", O},   {"SCPT_FT", O},
    {"SCPT_QE", O},   {"SCPT_BDEN", O}, {"SCPT_CPO", O},  {"SCPT_CPOD", O}, {"SCPT_QNET", O}, {"SCPT_FRRC", O},
    {"SCPT_EXPP", O}, {"SCPT_BQ", O},   {"SCPT_ISPP", O}, {"SCPT_NQT", O},  {"SCPT_NFR", O},  {"FILE_FSET", O},
}};

constexpr std::array<StandardGroup, 9> Groups{{
    {"PROJ", "", Proj},     {"TRAN", "", Tran},     {"UNIT", "", Unit},     {"TYPE", "", Type},
    {"DICT", "", Dict},     {"LOCA", "PROJ", Loca}, {"SCPG", "LOCA", Scpg}, {"SCPP", "SCPG", Scpp},
    {"SCPT", "SCPG", Scpt},
}};

}  // namespace

const StandardGroup* FindStandardGroup(std::string_view group)
{
    for (const StandardGroup& g : Groups)
        if (g.name == group) return &g;
    return nullptr;
}

int StandardPosition(const StandardGroup& group, std::string_view heading)
{
    for (std::size_t i = 0; i < group.headings.size(); ++i)
        if (group.headings[i].name == heading) return static_cast<int>(i);
    return -1;
}

bool IsKey(HeadingStatus status) { return status == HeadingStatus::KeyRequired || status == HeadingStatus::Key; }

bool IsRequired(HeadingStatus status)
{
    return status == HeadingStatus::KeyRequired || status == HeadingStatus::Required;
}

}  // namespace pemlo::profile
