#pragma once

#include <QString>

// The help texts on the tabs of the configuration dialog.
namespace ConfigurationTexts {

inline const QString DefaultsHelp = QString::fromUtf16(
    u"All data located here is used upon creation of a new race log. This is to "
    u"quicken the time it takes to get up and running with Zorvane predictions and "
    u"limit the need for repetitive data entry. Please be sure to verify all settings "
    u"before relying on software predictions and pages.");

inline const QString RaceTracksHelp = QString::fromUtf16(
    u"Here is the place you add or remove the race tracks you visit. To add a track, "
    u"you type in the name as you would like to see it. Abbreviations are acceptable "
    u"as long you can remember what they stand for. After you have entered in a track "
    u"name, click the add button to add it to the race log track name listing. This "
    u"will give you the opportunity to select the track for the next race log creation "
    u"instead of having to retype it. To remove a track, select the track name to "
    u"remove and click remove. This will not remove the track name from previously "
    u"created race logs.");

inline const QString TemplatesHelp = QString::fromUtf16(
    u"A template is used for exporting race log information into Microsoft's Excel. "
    u"Any number of templates can be created and managed. With the use of templates, "
    u"it is possible to build custom forms for printing and do additional mathematical "
    u"calculations for improved predictions. Not to mention, a template can be used "
    u"for printing your race log information.");

} // namespace ConfigurationTexts
