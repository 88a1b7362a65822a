#pragma once

class CrewView;
class MainWindow;

// Tools > Crew View...: the dialog on the running crew view.
namespace CrewViewCommand {

void add(MainWindow& main, CrewView& crew);

} // namespace CrewViewCommand
