#include "rtf/word_list.h"

namespace tolva::rtf {

namespace {

// clang-format off
constexpr std::string_view document_words[] = {
    "viewkind", "viewscale", "viewzk", "facingp", "margmirror", "ftnbj", "ftntj", "ftnstart", "ftnrstcont",
    "ftnrstpg", "ftnrestart", "ftnnar", "ftnnalc", "ftnnauc", "ftnnrlc", "ftnnruc", "fet", "aenddoc",
    "aendnotes", "aftnbj", "aftntj", "aftnstart", "aftnrstcont", "aftnrestart", "aftnnar", "aftnnalc",
    "aftnnauc", "aftnnrlc", "aftnnruc", "endnotes", "enddoc", "widowctrl", "hyphauto", "hyphconsec",
    "hyphcaps", "hyphhotz", "formshade", "formprot", "revprot", "annotprot", "linkstyles", "defformat",
    "doctemp", "fracwidth", "psover", "makebackup", "revisions", "revprop", "revbar", "htmautsp",
    "pgnstart", "deflangfe", "adeflang", "adeff", "stshfdbch", "stshfloch", "stshfhich", "stshfbi",
    "themelang", "themelangfe", "themelangcs", "noqfpromote", "lytcalctblwd", "lytprtmet", "lyttblrtgr",
    "lnbrkrule", "nolnhtadjtbl", "useltbaln", "alntblind", "splytwnine", "ftnlytwnine", "nospaceforul",
    "noultrlspc", "noxlattoyen", "expshrtn", "dntblnsbdb", "jexpand", "jcompress", "horzdoc", "vertdoc",
    "pgbrdrhead", "pgbrdrfoot", "noextrasprl", "prcolbl", "notabind", "wraptrsp", "bdbfhdr", "allprot",
    "dghspace", "dgvspace", "dghorigin", "dgvorigin", "dghshow", "dgvshow", "dgsnap", "dgmargin",
    "snaptogridincell", "allowfieldendsel", "wrppunct", "asianbrkrule", "nojkernpunct", "newtblstyruls",
    "nogrowautofit", "donotembedsysfont", "donotembedlingdata", "ignoremixedcontent", "saveinvalidxml",
    "showxmlerrors", "validatexml", "showplaceholdtext", "grfdocevents", "trackmoves", "trackformatting",
    "relyonvml", "usenormstyforlist", "noindnmbrts", "felnbrelev", "nocxsptable", "indrlsweleven",
    "noafcnsttbl", "afelev", "utinl", "hwelev", "spltpgpar", "notcvasp", "notbrkcnstfrctbl", "notvatxbx",
    "krnprsnet", "cachedcolbal", "nouicompat", "nofeaturethrottle", "nobrkwrptbl", "toplinepunct", "rtldoc",
    "ltrdoc", "fromtext", "fromhtml", "stylesortmethod", "readprot", "enforceprot", "sprstsp", "sprsspbf",
    "sprslnsp", "sprsbsp", "sprstsm", "transmf", "swpbdr", "subfontbysize", "truncatefontheight", "truncex",
    "lyrule", "cvmme", "otblrul", "msmcap", "nolead", "noextra", "bookfold", "bookfoldrev",
    "bookfoldsheets", "ilfomacatclnup",
};

constexpr std::string_view section_words[] = {
    "sbknone", "sbkcol", "sbkpage", "sbkeven", "sbkodd", "binfsxn", "binsxn", "cols", "colsx", "linebetcol",
    "endnhere", "linemod", "linex", "linestarts", "linerestart", "lineppage", "linecont", "pgwsxn",
    "pghsxn", "marglsxn", "margrsxn", "margtsxn", "margbsxn", "guttersxn", "margmirsxn", "lndscpsxn",
    "titlepg", "headery", "footery", "pgnstarts", "pgncont", "pgnrestart", "pgnx", "pgny", "pgndec",
    "pgnucrm", "pgnlcrm", "pgnucltr", "pgnlcltr", "pgnbidia", "pgnbidib", "pgnid", "pgnhn", "pgnhnsh",
    "pgnhnsp", "pgnhnsc", "pgnhnsm", "pgnhnsn", "vertalt", "vertalb", "vertalc", "vertalj", "sectdefaultcl",
    "sectspecifycl", "sectlinegrid", "sectexpand", "sectunlocked", "stextflow", "ltrsect", "rtlsect", "ds",
    "sftnbj", "sftntj", "sftnstart", "sftnrstcont", "sftnrestart", "sftnrstpg", "sftnnar", "sftnnalc",
    "sftnnauc", "sftnnrlc", "sftnnruc", "saftnstart", "saftnrstcont", "saftnrestart", "saftnnar",
    "saftnnalc", "saftnnauc", "saftnnrlc", "saftnnruc", "pgbrdropt", "colbalsxn", "sxnstarts", "sxnrestart",
    "sxndec", "nocolbal",
};

constexpr std::string_view without_effect[] = {
    "rsidroot", "yts", "ApplyBrkRules", "fbidis",
    "insrsid", "charrsid", "pararsid", "sectrsid", "tblrsid", "styrsid", "delrsid", "rsid", "pgpnum",
    "ipgp", "pgp", "aspalpha", "aspnum", "faauto", "fahang", "facenter", "faroman", "favar", "fafixed",
    "adjustright", "lin", "rin", "lisa", "lisb", "culi", "curi", "cufi", "ltrch", "rtlch", "fcs", "af",
    "afs", "ab", "ai", "aul", "alang", "acf", "aexpnd", "astrike", "acaps", "ascaps", "aup", "adn", "ashad",
    "aoutl", "loch", "hich", "dbch", "cgrid", "g", "gcw", "gridtbl", "langnp", "langfe", "langfenp",
    "noproof", "nooverflow", "wrapdefault", "contextualspace", "nosnaplinegrid", "sbauto", "saauto",
    "nohyphpar", "hyphpar", "subdocument", "vieww", "viewh", "viewbksp", "qnatural", "pardirnatural",
    "pardeftab", "cocoartf", "cocoasubrtf", "cocoatextscaling", "cocoaplatform", "jclisttab",
    "partightenfactor", "pu", "ssparaaux", "linkself", "trautofit", "trftsWidth", "trftsWidthB",
    "trftsWidthA", "trwWidth", "trwWidthB", "trwWidthA", "trpaddl", "trpaddt", "trpaddr", "trpaddb",
    "trpaddfl", "trpaddft", "trpaddfr", "trpaddfb", "trspdl", "trspdt", "trspdr", "trspdb", "trspdfl",
    "trspdft", "trspdfr", "trspdfb", "tblind", "tblindtype", "tbllkborder", "tbllkshading", "tbllkfont",
    "tbllkcolor", "tbllkbestfit", "tbllkhdrrows", "tbllklastrow", "tbllkhdrcols", "tbllklastcol",
    "tbllknorowband", "tbllknocolband", "irow", "irowband", "lastrow", "ltrrow", "rtlrow", "taprtl",
    "trkeepfollow", "ts", "trcbpat", "trcfpat", "trshdng", "trpat", "clftsWidth", "clwWidth", "cltxlrtb",
    "cltxtbrl", "cltxbtlr", "cltxlrtbv", "cltxtbrlv", "clpadl", "clpadt", "clpadr", "clpadb", "clpadfl",
    "clpadft", "clpadfr", "clpadfb", "clshdrawnil", "clFitText", "clNoWrap", "clhidemark", "ltrdoc",
    "pnlvlcont", "pnnumonce", "pnacross", "pnrestart", "pnprev", "pnql", "pnqr", "pnqc", "pnb", "pni",
    "pncf", "pnfs", "pnul", "pnulnone", "pncaps", "pnscaps", "pnstrike", "pnbidia", "pnbidib", "pnaiu",
    "picbpp", "ctint", "cshade", "caccentone", "caccenttwo", "caccentthree", "caccentfour", "caccentfive",
    "caccentsix", "cmaindarkone", "cmaindarktwo", "cmainlightone", "cmainlighttwo", "chyperlink",
    "cfollowedhyperlink", "cbackgroundone", "cbackgroundtwo", "ctextone", "ctexttwo", "flomajor",
    "fhimajor", "fdbmajor", "fbimajor", "flominor", "fhiminor", "fdbminor", "fbiminor", "fbias", "fnonline",
    "softpage", "softcol", "softline", "lbr", "nosectexpand", "nshwinv", "nshwpg", "chhres", "flddirty",
    "fldedit", "fldlock", "fldpriv",
};
// clang-format on

} // namespace

std::span<const std::string_view> kept_document_words() {
    return document_words;
}

std::span<const std::string_view> kept_section_words() {
    return section_words;
}

std::span<const std::string_view> silent_words() {
    return without_effect;
}

} // namespace tolva::rtf
