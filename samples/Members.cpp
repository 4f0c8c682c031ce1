// The members of a choir.
#include "SampleBuilder.h"
#include "Samples.h"

#include <string_view>

namespace tallybook::samples {

namespace {

using model::FieldType;

struct Member {
    std::string_view kind, lastName, firstName, voice, since, born, street, zip, town, phone, mail, call;
    bool paid;
    std::string_view fee, notes;
};

constexpr Member kMembers[] = {
    {"Passive", "Öberg", "Sofía", "Alto", "9/28/1993", "4/6/1967", "Havnegade 77", "2400", "Lyngmose", "31 67 38 18",
     "sofia.oberg@example.org", "12:00:00 PM", true, "25.00", "Sings solo."},
    {"Single", "Ulrich", "Viktor", "Tenor", "1/27/1998", "2/2/1963", "Lindenallee 82", "2150", "Nordhavn",
     "39 51 56 75", "", "5:00:00 PM", true, "48.00", ""},
    {"Single", "O'Brien", "Clara", "Alto", "9/27/1992", "12/9/1935", "Møllegade 50", "2400", "Lyngmose",
     "31 82 98 13", "clara.obrien@example.org", "12:00:00 PM", true, "48.00", ""},
    {"Honorary", "Grünwald", "Anders", "Tenor", "9/13/1980", "7/14/1966", "Havnegade 53", "2100", "Østerby",
     "35 96 34 43", "anders.grunwald@example.org", "7:00:00 PM", true, "", "Away from May to August."},
    {"Honorary", "Håkansson", "Emil", "Tenor", "1/15/1979", "8/6/1965", "Torvet 15", "2500", "Valby Langgade",
     "39 75 24 93", "", "6:30:00 PM", true, "", "Sings solo."},
    {"Passive", "Andersson", "Greta", "Alto", "8/1/1997", "3/13/1943", "Skolevej 107", "2100", "Østerby",
     "35 37 56 33", "greta.andersson@example.org", "5:00:00 PM", true, "25.00", ""},
    {"Single", "Castellanos", "Clara", "Soprano", "10/8/1997", "10/12/1930", "Strandvejen 111", "2150", "Nordhavn",
     "", "clara.castellanos@example.org", "5:00:00 PM", true, "48.00", "Sings solo."},
    {"Passive", "Jørgensen", "Élise", "Soprano", "1/24/1998", "3/24/1942", "Møllegade 31", "2300", "Sundby",
     "31 63 06 13", "elise.jorgensen@example.org", "5:00:00 PM", true, "25.00", "Board member since 1999."},
    {"Single", "Nilsson", "Ivan", "Bass", "9/6/1988", "2/5/1974", "Møllegade 53", "2500", "Valby Langgade",
     "31 45 27 26", "", "", true, "48.00", "Drives others to rehearsals."},
    {"Single", "Fischer", "Berta", "Alto", "9/19/1990", "2/12/1938", "Møllegade 5", "2200", "Nørrebro", "35 85 04 02",
     "berta.fischer@example.org", "7:00:00 PM", false, "48.00", ""},
    {"Family", "Petersen", "Carl", "Tenor", "8/11/2002", "2/3/1938", "Torvet 102", "2500", "Valby Langgade",
     "35 53 45 10", "", "", true, "72.00", ""},
    {"Single", "Andersson", "Tomás", "Bass", "9/1/1991", "2/3/1968", "Birkevej 108", "2200", "Nørrebro",
     "38 59 94 88", "", "6:30:00 PM", true, "48.00", "Keeps the music library."},
    {"Single", "Andersson", "Renée", "Alto", "1/16/1998", "4/23/1931", "Søndergade 26", "2400", "Lyngmose",
     "39 42 01 47", "renee.andersson@example.org", "8:15:00 AM", true, "48.00", "Keeps the music library."},
    {"Single", "Vogel", "Karin", "Alto", "1/11/1994", "11/9/1955", "Birkevej 45", "2150", "Nordhavn", "39 38 74 40",
     "karin.vogel@example.org", "", true, "48.00", "Wishes no calls before noon.\nBetter by e-mail."},
    {"Single", "Weiß", "Bruno", "Tenor", "1/4/1987", "8/9/1958", "Birkevej 42", "2300", "Sundby", "39 96 40 91", "",
     "5:00:00 PM", false, "48.00", ""},
    {"Passive", "Thomsen", "Ivan", "Tenor", "10/9/2000", "6/10/1966", "Havnegade 81", "2150", "Nordhavn",
     "35 13 98 34", "ivan.thomsen@example.org", "", true, "25.00", ""},
    {"Honorary", "Ulrich", "Sofía", "Alto", "10/7/1981", "8/9/1942", "Skolevej 70", "2150", "Nordhavn", "39 78 91 04",
     "sofia.ulrich@example.org", "7:00:00 PM", true, "", "Board member since 1999."},
    {"Family", "Thomsen", "René", "Tenor", "10/8/1991", "7/24/1935", "Skolevej 60", "2300", "Sundby", "31 58 70 72",
     "", "5:00:00 PM", true, "72.00", ""},
    {"Single", "Dubois", "Göran", "Tenor", "1/13/1985", "5/18/1935", "Torvet 99", "2500", "Valby Langgade",
     "38 74 10 04", "goran.dubois@example.org", "5:00:00 PM", true, "48.00", ""},
    {"Single", "Grünwald", "Anna", "Soprano", "1/6/1992", "6/22/1964", "Birkevej 113", "2400", "Lyngmose", "",
     "anna.grunwald@example.org", "8:15:00 AM", true, "48.00", "Drives others to rehearsals."},
    {"Single", "Öberg", "Clara", "Soprano", "9/18/1993", "12/18/1948", "Parkallé 35", "2400", "Lyngmose",
     "39 88 26 38", "", "5:00:00 PM", true, "48.00", "Cannot come on Tuesdays."},
    {"Single", "Rossi", "Nina", "Soprano", "1/20/1995", "1/18/1954", "Birkevej 53", "2300", "Sundby", "31 72 11 88",
     "nina.rossi@example.org", "5:00:00 PM", true, "48.00", "Trial membership until June."},
    {"Family", "Ibáñez", "Marcel", "Tenor", "9/5/1994", "7/27/1951", "Havnegade 25", "2100", "Østerby", "31 43 16 89",
     "", "", true, "72.00", ""},
    {"Passive", "Keller", "Johanna", "Alto", "9/16/1986", "8/24/1936", "Torvet 106", "2400", "Lyngmose",
     "35 99 67 55", "johanna.keller@example.org", "8:15:00 AM", true, "25.00", "Keeps the music library."},
    {"Single", "Grünwald", "Søren", "Tenor", "1/28/1995", "10/19/1964", "Lindenallee 100", "2500", "Valby Langgade",
     "38 33 40 77", "soren.grunwald@example.org", "", true, "48.00", ""},
    {"Honorary", "Ibáñez", "Clara", "Alto", "9/27/1982", "9/26/1956", "Skolevej 117", "2500", "Valby Langgade",
     "39 90 87 02", "clara.ibanez@example.org", "5:00:00 PM", true, "",
     "Wishes no calls before noon.\nBetter by e-mail."},
    {"Single", "Weiß", "David", "Bass", "10/27/1995", "2/16/1942", "Strandvejen 37", "2400", "Lyngmose",
     "39 28 24 23", "david.weiss@example.org", "", true, "48.00", "Trial membership until June."},
    {"Family", "Bauer", "Tomás", "Tenor", "9/3/2000", "2/11/1978", "Lindenallee 24", "2400", "Lyngmose",
     "35 86 47 01", "", "", true, "72.00", "Sings solo."},
    {"Single", "Müller", "Lotte", "Soprano", "1/4/1998", "1/11/1962", "Møllegade 36", "2500", "Valby Langgade",
     "39 82 76 24", "lotte.muller@example.org", "7:00:00 PM", false, "48.00", "Trial membership until June."},
    {"Single", "Müller", "Françoise", "Soprano", "9/23/1989", "7/25/1953", "Søndergade 7", "2500", "Valby Langgade",
     "38 48 60 12", "francoise.muller@example.org", "7:00:00 PM", true, "48.00", ""},
    {"Single", "Schäfer", "Maja", "Soprano", "1/13/1996", "8/21/1962", "Kirkevej 95", "2300", "Sundby", "",
     "maja.schafer@example.org", "5:00:00 PM", true, "48.00", ""},
    {"Single", "Quist", "Maja", "Soprano", "1/21/2003", "1/4/1954", "Kirkevej 71", "2200", "Nørrebro", "39 76 72 12",
     "", "12:00:00 PM", true, "48.00", "Cannot come on Tuesdays."},
    {"Passive", "Müller", "Bruno", "Tenor", "9/6/1991", "8/18/1977", "Torvet 77", "2300", "Sundby", "",
     "bruno.muller@example.org", "5:00:00 PM", true, "25.00", ""},
    {"Single", "Petersen", "Johanna", "Alto", "8/22/1996", "12/10/1975", "Torvet 7", "2150", "Nordhavn",
     "35 62 96 87", "johanna.petersen@example.org", "7:00:00 PM", true, "48.00", "Cannot come on Tuesdays."},
    {"Passive", "Castellanos", "Knut", "Tenor", "10/16/1992", "4/2/1946", "Lindenallee 78", "2500", "Valby Langgade",
     "", "knut.castellanos@example.org", "12:00:00 PM", true, "25.00", "Board member since 1999."},
    {"Honorary", "Nilsson", "Zoë", "Alto", "1/28/1982", "6/17/1933", "Søndergade 88", "2150", "Nordhavn",
     "39 27 85 53", "zoe.nilsson@example.org", "7:00:00 PM", true, "", "Sings solo."},
    {"Single", "Eriksen", "Renée", "Alto", "1/8/2002", "2/17/1960", "Søndergade 25", "2400", "Lyngmose",
     "38 44 78 87", "", "8:15:00 AM", true, "48.00", "Also plays the piano – ask before concerts."},
    {"Single", "Grünwald", "Hanna", "Soprano", "10/7/1995", "11/2/1981", "Kirkevej 117", "2200", "Nørrebro",
     "31 23 28 69", "hanna.grunwald@example.org", "12:00:00 PM", true, "48.00",
     "Also plays the piano – ask before concerts."},
    {"Family", "Ulrich", "Hanna", "Alto", "9/12/1994", "6/11/1943", "Møllegade 50", "2100", "Østerby", "39 89 98 98",
     "hanna.ulrich@example.org", "6:30:00 PM", true, "72.00", "Away from May to August."},
    {"Single", "Ulrich", "Élise", "Alto", "9/25/1988", "3/14/1974", "Birkevej 39", "2300", "Sundby", "31 79 10 55",
     "", "6:30:00 PM", true, "48.00", "Wishes no calls before noon.\nBetter by e-mail."},
    {"Single", "Jørgensen", "Carl", "Tenor", "9/3/2000", "5/16/1974", "Søndergade 118", "2150", "Nordhavn",
     "38 56 15 41", "", "5:00:00 PM", true, "48.00", "Trial membership until June."},
    {"Single", "O'Brien", "Ivan", "Bass", "8/8/1993", "12/17/1955", "Torvet 70", "2200", "Nørrebro", "39 84 49 24",
     "", "7:00:00 PM", true, "48.00", ""},
    {"Honorary", "Fischer", "Tomás", "Tenor", "9/28/1981", "1/8/1948", "Torvet 9", "2400", "Lyngmose", "35 82 37 02",
     "", "12:00:00 PM", true, "", "Cannot come on Tuesdays."},
    {"Honorary", "Castellanos", "Sofía", "Alto", "8/24/1981", "6/3/1936", "Lindenallee 63", "2100", "Østerby",
     "35 22 95 83", "sofia.castellanos@example.org", "8:15:00 AM", true, "", "Away from May to August."},
    {"Single", "Öberg", "Knut", "Bass", "8/11/1991", "6/22/1977", "Skolevej 110", "2400", "Lyngmose", "31 89 05 52",
     "", "8:15:00 AM", true, "48.00", ""},
    {"Family", "O'Brien", "Carl", "Tenor", "8/23/1995", "2/14/1930", "Parkallé 38", "2150", "Nordhavn", "39 97 21 41",
     "carl.obrien@example.org", "6:30:00 PM", false, "72.00", ""},
    {"Single", "Petersen", "Bruno", "Bass", "1/10/2002", "3/25/1971", "Lindenallee 76", "2300", "Sundby",
     "39 14 40 13", "bruno.petersen@example.org", "7:00:00 PM", false, "48.00", ""},
    {"Single", "Thomsen", "Pär", "Tenor", "1/9/1993", "3/25/1955", "Kirkevej 62", "2400", "Lyngmose", "38 72 51 43",
     "", "12:00:00 PM", true, "48.00", "Wishes no calls before noon.\nBetter by e-mail."},
    {"Single", "Grünwald", "Berta", "Soprano", "9/26/1991", "5/26/1963", "Strandvejen 54", "2150", "Nordhavn",
     "39 57 57 31", "", "5:00:00 PM", true, "48.00", ""},
    {"Single", "Ibáñez", "Emil", "Tenor", "10/20/1999", "9/18/1947", "Parkallé 13", "2150", "Nordhavn", "35 26 10 45",
     "emil.ibanez@example.org", "8:15:00 AM", true, "48.00", "Trial membership until June."},
    {"Honorary", "Castellanos", "Olga", "Alto", "1/14/1979", "11/3/1942", "Skolevej 40", "2300", "Sundby",
     "39 77 63 20", "", "7:00:00 PM", true, "", "Sings solo."},
    {"Family", "O'Brien", "Johanna", "Soprano", "1/22/1990", "2/22/1938", "Birkevej 2", "2500", "Valby Langgade", "",
     "", "8:15:00 AM", true, "72.00", "Wishes no calls before noon.\nBetter by e-mail."},
    {"Single", "Håkansson", "Paula", "Alto", "1/15/1997", "1/28/1979", "Torvet 72", "2150", "Nordhavn", "39 79 95 38",
     "", "12:00:00 PM", false, "48.00", "Also plays the piano – ask before concerts."},
    {"Family", "Grünwald", "Greta", "Alto", "1/11/2002", "5/19/1949", "Strandvejen 24", "2200", "Nørrebro",
     "39 21 13 18", "", "", true, "72.00", ""},
    {"Honorary", "Schäfer", "Olga", "Soprano", "1/2/1982", "2/14/1940", "Strandvejen 106", "2300", "Sundby",
     "38 64 65 17", "", "12:00:00 PM", true, "", "Board member since 1999."},
    {"Single", "Nilsson", "Karin", "Soprano", "9/20/2002", "6/26/1974", "Kirkevej 72", "2400", "Lyngmose",
     "38 52 24 43", "karin.nilsson@example.org", "6:30:00 PM", true, "48.00", "Sings solo."},
    {"Passive", "Jørgensen", "Karin", "Soprano", "10/6/1998", "9/10/1946", "Lindenallee 73", "2400", "Lyngmose",
     "35 83 91 25", "", "5:00:00 PM", true, "25.00", ""},
    {"Single", "Öberg", "Göran", "Tenor", "1/16/1983", "7/23/1966", "Parkallé 70", "2200", "Nørrebro", "31 67 93 17",
     "goran.oberg@example.org", "5:00:00 PM", true, "48.00", "Keeps the music library."},
    {"Single", "Fischer", "Ingrid", "Alto", "1/4/1998", "1/10/1982", "Havnegade 52", "2400", "Lyngmose",
     "35 33 76 70", "", "6:30:00 PM", true, "48.00", ""},
    {"Single", "Jørgensen", "Emil", "Bass", "9/21/1998", "1/6/1981", "Strandvejen 34", "2100", "Østerby",
     "39 25 72 51", "emil.jorgensen@example.org", "5:00:00 PM", true, "48.00", ""},
    {"Passive", "Bauer", "Karin", "Soprano", "10/26/2002", "7/16/1939", "Torvet 106", "2200", "Nørrebro",
     "39 46 62 59", "", "12:00:00 PM", true, "25.00", "Sings solo."},
    {"Single", "Quist", "Dora", "Alto", "9/14/1995", "1/11/1956", "Skolevej 97", "2400", "Lyngmose", "", "",
     "5:00:00 PM", true, "48.00", "Away from May to August."},
    {"Honorary", "Castellanos", "Tove", "Soprano", "9/8/1982", "7/2/1962", "Kirkevej 117", "2300", "Sundby",
     "35 79 39 84", "tove.castellanos@example.org", "", true, "", "Board member since 1999."},
    {"Passive", "Rossi", "Lars", "Bass", "1/8/1997", "12/14/1971", "Møllegade 32", "2100", "Østerby", "35 25 68 73",
     "", "", true, "25.00", "Board member since 1999."},
    {"Single", "Fischer", "Karin", "Soprano", "9/27/1993", "7/5/1963", "Birkevej 113", "2150", "Nordhavn",
     "31 68 40 39", "karin.fischer@example.org", "", true, "48.00", ""},
    {"Single", "Petersen", "Lotte", "Soprano", "10/23/1984", "4/18/1965", "Skolevej 90", "2100", "Østerby",
     "38 50 35 53", "", "", true, "48.00", "Away from May to August."},
    {"Single", "Fischer", "Clara", "Soprano", "1/23/1988", "4/9/1974", "Parkallé 30", "2400", "Lyngmose",
     "38 57 84 67", "", "5:00:00 PM", true, "48.00", ""},
    {"Single", "Vogel", "Fritz", "Tenor", "1/21/1987", "2/15/1972", "Torvet 103", "2400", "Lyngmose", "31 10 76 75",
     "fritz.vogel@example.org", "7:00:00 PM", true, "48.00", "Cannot come on Tuesdays."},
    {"Single", "Öberg", "Johanna", "Soprano", "1/9/1986", "9/1/1972", "Søndergade 50", "2150", "Nordhavn", "",
     "johanna.oberg@example.org", "6:30:00 PM", true, "48.00", ""},
    {"Honorary", "Bauer", "Pär", "Tenor", "9/25/1981", "6/11/1967", "Parkallé 96", "2500", "Valby Langgade",
     "31 76 37 64", "", "8:15:00 AM", true, "", "Keeps the music library."},
    {"Single", "Dubois", "Françoise", "Alto", "10/15/1986", "5/26/1965", "Havnegade 74", "2400", "Lyngmose",
     "39 43 04 25", "", "8:15:00 AM", true, "48.00", "Drives others to rehearsals."},
    {"Family", "Keller", "Fritz", "Tenor", "1/20/1998", "7/17/1961", "Lindenallee 80", "2100", "Østerby",
     "35 82 81 69", "", "8:15:00 AM", true, "72.00", ""},
    {"Passive", "Bauer", "Nina", "Alto", "10/17/1998", "5/25/1979", "Søndergade 101", "2500", "Valby Langgade",
     "35 58 32 31", "nina.bauer@example.org", "8:15:00 AM", true, "25.00", "Drives others to rehearsals."},
    {"Passive", "O'Brien", "Nina", "Alto", "1/23/2001", "3/16/1932", "Kirkevej 51", "2150", "Nordhavn", "31 10 30 52",
     "", "", false, "25.00", "Keeps the music library."},
    {"Single", "Castellanos", "Nina", "Soprano", "10/25/2000", "10/8/1976", "Søndergade 28", "2400", "Lyngmose",
     "39 69 11 29", "nina.castellanos@example.org", "7:00:00 PM", true, "48.00", ""},
    {"Family", "Ulrich", "Tove", "Soprano", "8/19/2002", "10/6/1974", "Parkallé 103", "2150", "Nordhavn",
     "31 37 53 44", "tove.ulrich@example.org", "12:00:00 PM", false, "72.00", ""},
    {"Single", "Grünwald", "Maja", "Alto", "8/16/2003", "8/21/1958", "Søndergade 3", "2150", "Nordhavn",
     "39 19 06 88", "maja.grunwald@example.org", "7:00:00 PM", false, "48.00", "Keeps the music library."},
    {"Single", "Quist", "Ingrid", "Alto", "10/23/1997", "5/4/1943", "Lindenallee 93", "2500", "Valby Langgade", "",
     "ingrid.quist@example.org", "12:00:00 PM", true, "48.00", "Wishes no calls before noon.\nBetter by e-mail."},
    {"Single", "Keller", "Anders", "Bass", "1/28/1993", "7/11/1979", "Strandvejen 66", "2400", "Lyngmose",
     "38 60 77 30", "anders.keller@example.org", "", true, "48.00", "Cannot come on Tuesdays."},
    {"Passive", "Jørgensen", "Greta", "Alto", "9/18/1992", "3/17/1974", "Torvet 18", "2500", "Valby Langgade",
     "39 28 26 35", "greta.jorgensen@example.org", "6:30:00 PM", true, "25.00", "Sings solo."},
    {"Single", "Håkansson", "Lotte", "Soprano", "8/12/1988", "4/5/1969", "Lindenallee 72", "2500", "Valby Langgade",
     "31 48 84 85", "lotte.hakansson@example.org", "12:00:00 PM", false, "48.00", "Board member since 1999."},
    {"Family", "Öberg", "Dora", "Alto", "10/9/1986", "7/4/1935", "Torvet 26", "2300", "Sundby", "38 46 63 90",
     "dora.oberg@example.org", "", true, "72.00", "Drives others to rehearsals."},
    {"Single", "Vogel", "Lars", "Tenor", "1/24/1995", "7/26/1951", "Torvet 35", "2200", "Nørrebro", "38 99 02 50",
     "lars.vogel@example.org", "", true, "48.00", ""},
    {"Single", "Jørgensen", "Tove", "Alto", "8/9/2002", "1/2/1934", "Skolevej 115", "2200", "Nørrebro", "38 95 23 82",
     "tove.jorgensen@example.org", "5:00:00 PM", true, "48.00", ""},
    {"Family", "Öberg", "Greta", "Soprano", "1/20/1999", "7/20/1964", "Parkallé 35", "2100", "Østerby", "39 58 49 04",
     "", "8:15:00 AM", true, "72.00", ""},
    {"Single", "Andersson", "Paula", "Soprano", "1/9/1998", "5/22/1944", "Lindenallee 71", "2100", "Østerby", "", "",
     "", true, "48.00", "Drives others to rehearsals."},
    {"Single", "Castellanos", "Søren", "Bass", "8/4/1987", "1/11/1973", "Søndergade 38", "2500", "Valby Langgade",
     "35 30 20 42", "", "6:30:00 PM", true, "48.00", ""},
    {"Single", "Ørsted", "Lotte", "Alto", "10/8/1986", "6/23/1953", "Birkevej 66", "2500", "Valby Langgade",
     "31 18 13 90", "lotte.orsted@example.org", "12:00:00 PM", false, "48.00", "Away from May to August."},
    {"Family", "Fischer", "Bruno", "Bass", "1/12/1994", "7/17/1946", "Strandvejen 73", "2500", "Valby Langgade",
     "38 33 42 97", "bruno.fischer@example.org", "5:00:00 PM", true, "72.00", "Sings solo."},
    {"Single", "Thomsen", "Emil", "Bass", "1/7/1984", "10/22/1954", "Strandvejen 35", "2150", "Nordhavn", "",
     "emil.thomsen@example.org", "8:15:00 AM", true, "48.00", "Board member since 1999."},
    {"Single", "Ulrich", "Ingrid", "Alto", "10/5/1991", "3/23/1933", "Birkevej 22", "2150", "Nordhavn", "31 61 42 03",
     "", "12:00:00 PM", false, "48.00", ""},
    {"Single", "Ulrich", "Olga", "Alto", "9/24/1986", "7/25/1969", "Kirkevej 72", "2300", "Sundby", "35 79 36 18",
     "olga.ulrich@example.org", "12:00:00 PM", false, "48.00", "Trial membership until June."},
    {"Single", "Nilsson", "Pär", "Tenor", "8/1/1983", "10/19/1947", "Parkallé 7", "2300", "Sundby", "35 20 61 25",
     "par.nilsson@example.org", "7:00:00 PM", true, "48.00", ""},
    {"Honorary", "Vogel", "Johanna", "Soprano", "1/11/1979", "3/26/1960", "Torvet 45", "2150", "Nordhavn", "",
     "johanna.vogel@example.org", "", true, "", "Away from May to August."},
    {"Single", "Bauer", "Sofía", "Soprano", "9/22/1996", "10/9/1982", "Strandvejen 69", "2200", "Nørrebro",
     "39 83 92 06", "sofia.bauer@example.org", "", true, "48.00", ""},
    {"Single", "Lefèvre", "Ivan", "Tenor", "9/10/2003", "9/15/1934", "Møllegade 104", "2100", "Østerby", "",
     "ivan.lefevre@example.org", "5:00:00 PM", false, "48.00", ""},
    {"Family", "Müller", "Pär", "Bass", "10/25/1996", "2/16/1981", "Skolevej 65", "2300", "Sundby", "31 11 73 18",
     "par.muller@example.org", "6:30:00 PM", false, "72.00", "Also plays the piano – ask before concerts."},
    {"Passive", "Ulrich", "Lotte", "Alto", "8/9/1990", "11/11/1934", "Lindenallee 23", "2200", "Nørrebro",
     "35 37 06 95", "lotte.ulrich@example.org", "7:00:00 PM", true, "25.00", ""},
    {"Single", "Lefèvre", "Élise", "Alto", "9/1/1984", "7/17/1930", "Lindenallee 3", "2200", "Nørrebro", "", "",
     "12:00:00 PM", true, "48.00", "Trial membership until June."},
    {"Single", "Keller", "Tomás", "Bass", "1/16/1994", "12/6/1956", "Skolevej 68", "2300", "Sundby", "",
     "tomas.keller@example.org", "", true, "48.00", ""},
    {"Family", "Ulrich", "Maja", "Soprano", "9/20/1985", "8/28/1952", "Birkevej 56", "2400", "Lyngmose", "",
     "maja.ulrich@example.org", "8:15:00 AM", true, "72.00", "Also plays the piano – ask before concerts."},
    {"Single", "Rossi", "Zoë", "Soprano", "1/17/1995", "8/15/1970", "Søndergade 41", "2400", "Lyngmose",
     "38 29 68 59", "zoe.rossi@example.org", "7:00:00 PM", true, "48.00", ""},
    {"Single", "Müller", "Søren", "Tenor", "9/4/1983", "3/27/1944", "Parkallé 104", "2100", "Østerby", "38 18 23 04",
     "", "7:00:00 PM", false, "48.00", ""},
    {"Single", "Andersson", "Sofía", "Alto", "9/9/1985", "4/3/1971", "Strandvejen 104", "2300", "Sundby",
     "31 73 07 98", "", "", true, "48.00", ""},
    {"Passive", "Jørgensen", "Hugo", "Tenor", "1/20/1992", "1/28/1954", "Lindenallee 72", "2300", "Sundby",
     "35 78 80 40", "", "8:15:00 AM", true, "25.00", "Also plays the piano – ask before concerts."},
    {"Passive", "Andersson", "Marcel", "Bass", "8/28/2001", "5/22/1970", "Møllegade 15", "2150", "Nordhavn",
     "35 31 88 74", "marcel.andersson@example.org", "", true, "25.00", ""},
    {"Single", "Thomsen", "Viktor", "Bass", "1/1/1988", "12/7/1934", "Torvet 36", "2300", "Sundby", "31 90 34 54",
     "viktor.thomsen@example.org", "5:00:00 PM", false, "48.00", "Drives others to rehearsals."},
    {"Single", "Dubois", "Dora", "Alto", "10/14/1995", "8/19/1945", "Birkevej 29", "2200", "Nørrebro", "",
     "dora.dubois@example.org", "8:15:00 AM", true, "48.00", "Trial membership until June."},
    {"Family", "Ørsted", "Greta", "Alto", "1/15/1998", "2/12/1970", "Lindenallee 2", "2400", "Lyngmose",
     "38 47 84 88", "greta.orsted@example.org", "5:00:00 PM", true, "72.00", "Sings solo."},
    {"Passive", "Ibáñez", "Tove", "Alto", "8/11/1992", "10/4/1936", "Skolevej 115", "2300", "Sundby", "31 56 02 47",
     "tove.ibanez@example.org", "5:00:00 PM", true, "25.00", "Wishes no calls before noon.\nBetter by e-mail."},
    {"Single", "Vogel", "Anders", "Tenor", "1/12/1994", "8/17/1940", "Parkallé 90", "2500", "Valby Langgade",
     "35 12 50 55", "", "8:15:00 AM", true, "48.00", ""},
    {"Single", "Quist", "Göran", "Tenor", "8/27/1994", "9/13/1939", "Torvet 60", "2100", "Østerby", "38 94 93 60", "",
     "", true, "48.00", ""},
    {"Single", "Andersson", "Lotte", "Soprano", "9/18/1990", "9/4/1965", "Parkallé 40", "2400", "Lyngmose",
     "31 82 30 16", "", "5:00:00 PM", true, "48.00", ""},
    {"Passive", "Håkansson", "Hanna", "Alto", "1/7/1993", "8/6/1967", "Strandvejen 53", "2150", "Nordhavn",
     "31 74 19 18", "", "5:00:00 PM", true, "25.00", "Cannot come on Tuesdays."},
    {"Family", "Nilsson", "David", "Tenor", "1/26/1986", "2/24/1972", "Havnegade 50", "2400", "Lyngmose",
     "39 24 63 38", "", "5:00:00 PM", true, "72.00", "Sings solo."},
    {"Youth", "Ibáñez", "Greta", "Soprano", "9/11/2000", "8/7/1986", "Kirkevej 51", "2400", "Lyngmose", "", "",
     "5:00:00 PM", true, "20.00", "Also plays the piano – ask before concerts."},
    {"Single", "Ibáñez", "Zoë", "Soprano", "1/14/1990", "8/13/1976", "Parkallé 42", "2200", "Nørrebro", "31 49 67 07",
     "zoe.ibanez@example.org", "6:30:00 PM", true, "48.00", "Sings solo."},
    {"Single", "Lefèvre", "Karin", "Alto", "9/24/1986", "8/24/1963", "Skolevej 32", "2400", "Lyngmose", "",
     "karin.lefevre@example.org", "5:00:00 PM", true, "48.00", ""},
    {"Single", "Jørgensen", "Lars", "Tenor", "9/2/1998", "3/16/1950", "Torvet 83", "2200", "Nørrebro", "31 37 32 75",
     "lars.jorgensen@example.org", "12:00:00 PM", true, "48.00", "Wishes no calls before noon.\nBetter by e-mail."},
    {"Honorary", "Jørgensen", "Clara", "Soprano", "9/8/1981", "5/11/1967", "Birkevej 7", "2100", "Østerby",
     "35 46 82 36", "clara.jorgensen@example.org", "12:00:00 PM", true, "", "Sings solo."},
};

} // namespace

platform::Bytes members() {
    SampleBuilder sample("MS2_Members");
    sample.setCategories({"Active", "Passive", "Honorary"});
    const int lastName = sample.addField(FieldType::Text, "Last name");
    const int firstName = sample.addField(FieldType::Text, "First name");
    const int voice = sample.addField(FieldType::List, "Voice");
    const int kind = sample.addField(FieldType::RadioButton, "Membership");
    const int since = sample.addField(FieldType::Date, "Since");
    const int born = sample.addField(FieldType::Date, "Born");
    const int street = sample.addField(FieldType::Text, "Street");
    const int zip = sample.addField(FieldType::Text, "Zip");
    const int town = sample.addField(FieldType::Text, "Town");
    const int phone = sample.addField(FieldType::Text, "Phone");
    const int mail = sample.addField(FieldType::Text, "E-mail");
    const int call = sample.addField(FieldType::Time, "Best time to call");
    const int paid = sample.addField(FieldType::Checkbox, "Fee paid");
    const int fee = sample.addField(FieldType::Float, "Fee");
    const int notes = sample.addField(FieldType::Memo, "Notes");
    const int number = sample.addField(FieldType::AutoIncremental, "Number");
    const int key = sample.addField(FieldType::Key, "Key");
    sample.addItems(voice, {"Soprano", "Alto", "Tenor", "Bass"});
    sample.addItems(kind, {"Single", "Family", "Youth", "Passive", "Honorary"});
    sample.field(kind).Default = "1";
    sample.field(lastName).SearchField = 1;
    sample.field(firstName).SearchField = 1;
    sample.field(mail).Decimals = 1; // no capital at the start
    sample.field(town).AutoWriter = 7;
    sample.addItems(town, {"Østerby", "Nordhavn", "Nørrebro", "Sundby", "Lyngmose", "Valby Langgade"});
    sample.field(since).Default = "A";
    sample.field(fee).Decimals = 2;
    sample.field(fee).Default = "48.00";

    int count = 0;
    for (const Member& member : kMembers) {
        const bool active = member.kind != "Passive" && member.kind != "Honorary";
        sample.addRecord(active ? "Active" : member.kind);
        sample.set(lastName, member.lastName);
        sample.set(firstName, member.firstName);
        sample.setItem(voice, member.voice);
        sample.setItem(kind, member.kind);
        sample.set(since, member.since);
        sample.set(born, member.born);
        sample.set(street, member.street);
        sample.set(zip, member.zip);
        sample.set(town, member.town);
        sample.set(phone, member.phone);
        sample.set(mail, member.mail);
        sample.set(call, member.call);
        sample.check(paid, member.paid);
        sample.set(fee, member.fee);
        sample.set(notes, member.notes);
        sample.set(number, std::to_string(++count));
    }
    sample.database().AutoIncNext[number] = count + 1;

    sample.addView("Phone list", {lastName, firstName, phone, call}, lastName);
    sample.addView("Letters", {firstName, lastName, street, zip, town}, zip);
    sample.addView("Fees", {lastName, firstName, kind, fee, paid}, lastName);
    sample.addFilter("Fee open", {{paid, '=', "0"}, {fee, '>', "0"}});
    sample.addFilter("Sopranos", {{voice, '=', "Soprano"}});
    sample.addFilter("Young", {{born, 'J', "1/1/1984"}});
    sample.addForm({lastName, firstName, voice, kind, since, street, zip, town, phone, mail, paid, notes});
    static_cast<void>(key); // filled with each record
    return sample.build();
}

} // namespace tallybook::samples
