const char16_t* frequencyKey = u"SOFTWARE\\Zorvane\\Main\\Defaults\\";
