#include "host/formula/date_language.h"

namespace quorvel::host {
namespace {

/// The first one is used for languages that are not listed.
constexpr DateLanguage languages[] = {
    {0x09,
     {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October", "November",
      "December"},
     {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"}},
    {0x06,
     {"januar", "februar", "marts", "april", "maj", "juni", "juli", "august", "september", "oktober", "november",
      "december"},
     {"mandag", "tirsdag", "onsdag", "torsdag", "fredag", "lørdag", "søndag"}},
    {0x07,
     {"Januar", "Februar", "März", "April", "Mai", "Juni", "Juli", "August", "September", "Oktober", "November",
      "Dezember"},
     {"Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag", "Sonntag"}},
    {0x0A,
     {"enero", "febrero", "marzo", "abril", "mayo", "junio", "julio", "agosto", "septiembre", "octubre", "noviembre",
      "diciembre"},
     {"lunes", "martes", "miércoles", "jueves", "viernes", "sábado", "domingo"}},
    {0x0B,
     {"tammikuu", "helmikuu", "maaliskuu", "huhtikuu", "toukokuu", "kesäkuu", "heinäkuu", "elokuu", "syyskuu",
      "lokakuu", "marraskuu", "joulukuu"},
     {"maanantai", "tiistai", "keskiviikko", "torstai", "perjantai", "lauantai", "sunnuntai"}},
    {0x0C,
     {"janvier", "février", "mars", "avril", "mai", "juin", "juillet", "août", "septembre", "octobre", "novembre",
      "décembre"},
     {"lundi", "mardi", "mercredi", "jeudi", "vendredi", "samedi", "dimanche"}},
    {0x10,
     {"gennaio", "febbraio", "marzo", "aprile", "maggio", "giugno", "luglio", "agosto", "settembre", "ottobre",
      "novembre", "dicembre"},
     {"lunedì", "martedì", "mercoledì", "giovedì", "venerdì", "sabato", "domenica"}},
    {0x13,
     {"januari", "februari", "maart", "april", "mei", "juni", "juli", "augustus", "september", "oktober", "november",
      "december"},
     {"maandag", "dinsdag", "woensdag", "donderdag", "vrijdag", "zaterdag", "zondag"}},
    {0x14,
     {"januar", "februar", "mars", "april", "mai", "juni", "juli", "august", "september", "oktober", "november",
      "desember"},
     {"mandag", "tirsdag", "onsdag", "torsdag", "fredag", "lørdag", "søndag"}},
    {0x15,
     {"styczeń", "luty", "marzec", "kwiecień", "maj", "czerwiec", "lipiec", "sierpień", "wrzesień", "październik",
      "listopad", "grudzień"},
     {"poniedziałek", "wtorek", "środa", "czwartek", "piątek", "sobota", "niedziela"}},
    {0x16,
     {"janeiro", "fevereiro", "março", "abril", "maio", "junho", "julho", "agosto", "setembro", "outubro", "novembro",
      "dezembro"},
     {"segunda-feira", "terça-feira", "quarta-feira", "quinta-feira", "sexta-feira", "sábado", "domingo"}},
    {0x1D,
     {"januari", "februari", "mars", "april", "maj", "juni", "juli", "augusti", "september", "oktober", "november",
      "december"},
     {"måndag", "tisdag", "onsdag", "torsdag", "fredag", "lördag", "söndag"}},
};

}  // namespace

const DateLanguage& dateLanguage(int number) {
  for (const DateLanguage& each : languages) {
    if (each.primary == (number & 0x3FF)) return each;
  }
  return languages[0];
}

bool writesDayFirst(int number) { return number != defaultLanguage; }

}  // namespace quorvel::host
