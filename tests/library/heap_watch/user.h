#pragma once

void takeDirectly(void);
void takeByFormatting(void);
void takeNothing(void);
