#include "Names.h"

#include <QString>

#include <stdexcept>

namespace samplegen {

namespace {

using Texts = std::vector<std::string>;

// Pairs of district and volume written "Name|Volume".
std::vector<District> Districts(const Texts& pairs) {
    std::vector<District> out;
    for (const std::string& pair : pairs) {
        const std::size_t bar = pair.find('|');
        out.push_back({Cp1252(pair.substr(0, bar)), pair.substr(bar + 1)});
    }
    return out;
}

Texts Converted(const Texts& utf8) {
    Texts out;
    for (const std::string& text : utf8)
        out.push_back(Cp1252(text));
    return out;
}

std::vector<SurnameRun> Converted(std::vector<SurnameRun> runs) {
    for (SurnameRun& run : runs) {
        run.Surname = Cp1252(run.Surname);
        run.Forenames = Converted(run.Forenames);
    }
    return runs;
}

const Texts VictorianForenames = {
    "Abraham", "Agnes",     "Alfred",    "Alice",  "Ann",    "Ann",      "Betsy",   "Charles",
    "Eliza",   "Elizabeth", "Ellen",     "Emma",   "Esther", "George",   "Hannah",  "Harriet",
    "Henry",   "Isaac",     "James",     "James",  "Jane",   "John",     "John",    "Jonathan",
    "Joseph",  "Margaret",  "Martha",    "Mary",   "Mary",   "Mary Ann", "Matthew", "Peter",
    "Richard", "Robert",    "Ruth",      "Samuel", "Sarah",  "Susannah", "Thomas",  "William",
    "William", "Edward",    "Frederick", "Louisa", "Emily",  "Walter",   "Arthur",  "Charlotte"};

const Texts EdwardianForenames = {
    "Ada",      "Albert",  "Alfred",    "Alice",  "Annie",      "Arthur",  "Beatrice", "Cecil",
    "Clara",    "Doris",   "Dorothy",   "Edith",  "Edward",     "Elsie",   "Ernest",   "Ethel",
    "Florence", "Frank",   "Frederick", "George", "Gladys",     "Harold",  "Harry",    "Herbert",
    "Hilda",    "Ivy",     "James",     "John",   "John Henry", "Joseph",  "Kathleen", "Leonard",
    "Lilian",   "Mabel",   "Margaret",  "Mary",   "May",        "Nellie",  "Percy",    "Reginald",
    "Sidney",   "Stanley", "Thomas",    "Violet", "Walter",     "William", "Winifred", "Zoë"};

const Texts SixtiesForenames = {
    "Alan",      "Andrew",       "Angela",     "Anthony", "Barbara",  "Carol",   "Caroline",
    "Christine", "Claire",       "David",      "Dawn",    "Deborah",  "Elaine",  "Gary",
    "Helen",     "Ian",          "Jacqueline", "Jane",    "Jennifer", "John",    "Julie",
    "Karen",     "Karen Louise", "Kevin",      "Linda",   "Lisa",     "Mark",    "Mark Andrew",
    "Martin",    "Michael",      "Nicola",     "Nigel",   "Paul",     "Peter",   "Philip",
    "Richard",   "Robert",       "Sarah",      "Sharon",  "Simon",    "Stephen", "Steven",
    "Susan",     "Tracey",       "Wendy",      "Renée",   "José",     "Zoë"};

const Texts TwentiethMothers = {
    "ASHWORTH", "BAKER",   "BARNES", "BROWN",  "CLARKE", "COOPER",  "DAVIES", "DUFFY",
    "EDWARDS",  "EVANS",   "FLYNN",  "GREEN",  "HALL",   "HARRIS",  "HILL",   "HOLT",
    "HUGHES",   "JACKSON", "JONES",  "KELLY",  "KING",   "LEFÈVRE", "LEWIS",  "MARTIN",
    "MCCANN",   "MOORE",   "MORGAN", "MORRIS", "MÜLLER", "O'NEILL", "PARRY",  "PRICE",
    "REILLY",   "ROBERTS", "SCOTT",  "SHAW",   "SMITH",  "TAYLOR",  "THOMAS", "TURNER",
    "WALSH",    "WARD",    "WATSON", "WHITE",  "WILSON", "WOOD",    "WRIGHT", "YOUNG"};

const Texts EarlyDistricts = {"Ashton under Lyne|XX", "Barnsley|XXII",  "Bath|XI",
                              "Birmingham|XVI",       "Blackburn|XXI",  "Bolton|XXI",
                              "Bradford|XXIII",       "Bristol|XI",     "Bury|XXI",
                              "Carlisle|XXV",         "Chorley|XXI",    "Derby|XIX",
                              "Dewsbury|XXII",        "Exeter|X",       "Halifax|XXII",
                              "Huddersfield|XXII",    "Keighley|XXIII", "Lancaster|XXV",
                              "Leeds|XXIII",          "Leicester|XV",   "Liverpool|XX",
                              "Macclesfield|XIX",     "Manchester|XX",  "Newcastle upon Tyne|XXV",
                              "Norwich|XIII",         "Nottingham|XV",  "Preston|XXI",
                              "Rochdale|XXI",         "Salford|XX",     "Sheffield|XXII",
                              "Stockport|XIX",        "Wakefield|XXII", "Whitechapel|II",
                              "St Pancras|I",         "Islington|III",  "Lambeth|IV"};

const Texts VictorianDistricts = {
    "Ashton L.|8d",   "Barnsley|9c",     "Bath|5c",          "Bethnal Green|1c", "Birmingham|6d",
    "Blackburn|8e",   "Bolton|8c",       "Bradford|9b",      "Brighton|2b",      "Bristol|6a",
    "Burnley|8e",     "Camberwell|1d",   "Cardiff|11a",      "Cheltenham|6a",    "Chester|8a",
    "Chorlton|8c",    "Derby|7b",        "Dudley|6c",        "Exeter|5b",        "Greenwich|1d",
    "Halifax|9a",     "Huddersfield|9a", "Hull|9d",          "Islington|1b",     "Kensington|1a",
    "Lambeth|1d",     "Leeds|9b",        "Leicester|7a",     "Liverpool|8b",     "Manchester|8d",
    "Marylebone|1a",  "Merthyr T.|11a",  "Newcastle T.|10b", "Norwich|4b",       "Nottingham|7b",
    "Oldham|8d",      "Pancras|1b",      "Plymouth|5b",      "Portsea I.|2b",    "Preston|8e",
    "Rochdale|8e",    "Salford|8d",      "Sheffield|9c",     "Stepney|1c",       "Stoke T.|6b",
    "Sunderland|10a", "Wakefield|9c",    "Walsall|6b",       "West Derby|8b",    "West Ham|4a",
    "Wigan|8c",       "Wolverhampton|6b"};

const Texts EdwardianDistricts = {
    "Barrow F.|8e",     "Bath|5c",          "Birmingham|6d",    "Bolton|8c",
    "Bootle|8b",        "Bradford Y.|9b",   "Brentford|3a",     "Bristol|6a",
    "Cardiff|11a",      "Chorlton|8c",      "Croydon|2a",       "Derby|7b",
    "Halifax|9a",       "Hampstead|1a",     "Islington|1b",     "Lambeth|1d",
    "Leeds|9b",         "Leicester|7a",     "Liverpool N.|8b",  "Liverpool S.|8b",
    "Manchester N.|8d", "Manchester S.|8d", "Newcastle T.|10b", "Newport M.|11a",
    "Norwich|4b",       "Nottingham|7b",    "Preston|8e",       "Reading|2c",
    "Salford|8d",       "Sheffield|9c",     "Stepney|1c",       "Sunderland|10a",
    "Taunton|5c",       "West Ham|4a",      "Wigan|8c",         "Wandsworth|1d"};

const Texts SixtiesDistricts = {
    "Barnsley|2c",       "Birmingham|9c",     "Blackburn|10b",    "Bolton|10c",
    "Bradford|2b",       "Bristol|7b",        "Bury|10c",         "Cardiff|8b",
    "Chester|10a",       "Coventry|9c",       "Derby|3b",         "Doncaster|2c",
    "Halifax|2d",        "Huddersfield|2d",   "Hull|2a",          "Lambeth|5c",
    "Leeds|2b",          "Leicester|3a",      "Liverpool N.|10a", "Liverpool S.|10a",
    "Manchester N.|10d", "Manchester S.|10d", "Newcastle|1b",     "Nottingham|3c",
    "Oldham|10d",        "Plymouth|7a",       "Preston|10b",      "Rochdale|10e",
    "Salford|10d",       "Sheffield|2e",      "Stockport|10a",    "Stoke on Trent|9b",
    "Sunderland|1a",     "Wakefield|2d",      "Wigan|10c",        "Wolverhampton|9b"};

} // namespace

std::string Cp1252(const std::string& utf8) {
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    std::string out;
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if (code > 0xFF || (code >= 0x80 && code < 0xA0))
            throw std::runtime_error("not a Latin-1 letter in: " + utf8);
        out.push_back(static_cast<char>(code));
    }
    return out;
}

NamePools Names1843() {
    return {Converted(std::vector<SurnameRun>{{"JACK", 2},
                                              {"JACKAMAN", 1},
                                              {"JACKLIN", 2},
                                              {"JACKMAN", 3},
                                              {"JACKS", 2},
                                              {"JACKSON", 28, {"Mary Ann", "Susannah"}},
                                              {"JACOB", 3},
                                              {"JACOBS", 4},
                                              {"JACQUES", 2},
                                              {"JAGGER", 5},
                                              {"JAGO", 2},
                                              {"JAKEMAN", 2},
                                              {"JAKINS", 1},
                                              {"JAMES", 20}}),
            Converted(VictorianForenames),
            Districts(EarlyDistricts),
            {},
            {},
            560,
            {}};
}

NamePools Names1872() {
    return {Converted(std::vector<SurnameRun>{{"HARRIS", 30},
                                              {"HARRISON", 38, {"Mary Elizabeth"}},
                                              {"HARROD", 2},
                                              {"HARROLD", 3},
                                              {"HARROP", 5},
                                              {"HARROW", 2},
                                              {"HARRY", 4},
                                              {"HART", 40}}),
            Converted(VictorianForenames),
            Districts(VictorianDistricts),
            {},
            {},
            640,
            {}};
}

NamePools Names1872Double() {
    return {Converted(std::vector<SurnameRun>{{"ROBERTS", 60},
                                              {"ROBERTSHAW", 4},
                                              {"ROBERTSON", 22},
                                              {"ROBESON", 2},
                                              {"ROBEY", 3},
                                              {"ROBINS", 6},
                                              {"ROBINSON", 110, {"William Henry"}},
                                              {"ROBLEY", 2},
                                              {"ROBSON", 40}}),
            Converted(VictorianForenames),
            Districts(VictorianDistricts),
            {},
            {},
            640,
            {}};
}

NamePools Names1911() {
    return {Converted(std::vector<SurnameRun>{{"PARDOE", 3},
                                              {"PARÉ", 2, {"André", "Hélène"}},
                                              {"PARFITT", 5},
                                              {"PARGETER", 2},
                                              {"PARISH", 6},
                                              {"PARK", 9},
                                              {"PARKER", 60, {"Zoë"}},
                                              {"PARKES", 12},
                                              {"PARKHOUSE", 2},
                                              {"PARKIN", 8},
                                              {"PARKINSON", 20}}),
            Converted(EdwardianForenames),
            Districts(EdwardianDistricts),
            Converted(TwentiethMothers),
            {},
            1500,
            {}};
}

// The runs are chosen for the ten-line gaps: WALKER's long entry counts two lines towards the
// ten, WALL's eleventh entry loses its gap when WALLACE starts, WALLACE runs over into the
// second column where the count starts again, and WALSH takes a gap near the foot.
NamePools Names1965() {
    return {Converted(std::vector<SurnameRun>{{"WALDEN", 2, {"Zoë"}},
                                              {"WALDRON", 1},
                                              {"WALE", 3},
                                              {"WALES", 2},
                                              {"WALKDEN", 1},
                                              {"WALKER", 23, {}, {7}},
                                              {"WALKINGTON", 1, {}, {1}},
                                              {"WALL", 11},
                                              {"WALLACE", 16, {"Renée"}},
                                              {"WALLBANK", 2},
                                              {"WALLER", 4},
                                              {"WALLEY", 1},
                                              {"WALLING", 2},
                                              {"WALLINGTON", 3},
                                              {"WALLIS", 5, {"José"}},
                                              {"WALLS", 2},
                                              {"WALMSLEY", 4},
                                              {"WALSH", 26},
                                              {"WALTERS", 5}}),
            Converted(SixtiesForenames),
            Districts(SixtiesDistricts),
            Converted(TwentiethMothers),
            Converted(Texts{"MONTGOMERY-CUNNINGHAM", "HAMILTON-FITZGERALD"}),
            1980,
            {}};
}

NamePools Names1988() {
    return {Converted(std::vector<SurnameRun>{{"WATERS", 3},
                                              {"WATERSON", 1},
                                              {"WATERWORTH", 2},
                                              {"WATKIN", 2},
                                              {"WATKINS", 18, {"Chloë"}},
                                              {"WATKINSON", 4, {}, {2}},
                                              {"WATLING", 2},
                                              {"WATMORE", 1},
                                              {"WATSON", 34, {"Noémie"}},
                                              {"WATT", 9},
                                              {"WATTS", 24},
                                              {"WAUGH", 4},
                                              {"WAY", 6},
                                              {"WAYMAN", 2},
                                              {"WEALE", 3},
                                              {"WEATHERALL", 3},
                                              {"WEAVER", 12},
                                              {"WEBB", 30}}),
            Converted(SixtiesForenames),
            Districts(SixtiesDistricts),
            Converted(TwentiethMothers),
            Converted(Texts{"FEATHERSTONEHAUGH", "WORTHINGTON-SMYTHE"}),
            2980,
            1};
}

NamePools Names1995() {
    return {Converted(std::vector<SurnameRun>{{"WHEATLEY", 4},
                                              {"WHEELER", 16, {"Zoë"}},
                                              {"WHELAN", 5, {}, {3}},
                                              {"WHITAKER", 9},
                                              {"WHITBY", 2},
                                              {"WHITE", 38, {"Renée"}},
                                              {"WHITEHEAD", 11},
                                              {"WHITEHOUSE", 4, {}, {2}},
                                              {"WHITFIELD", 6},
                                              {"WHITING", 3},
                                              {"WHITTAKER", 12},
                                              {"WHITTLE", 5},
                                              {"WHYTE", 3}}),
            Converted(SixtiesForenames),
            Districts(SixtiesDistricts),
            Converted(TwentiethMothers),
            Converted(Texts{"FITZPATRICK", "ABERCROMBIE"}),
            2980,
            4};
}

} // namespace samplegen
