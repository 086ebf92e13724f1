#pragma once
// Le maschere di record della domanda del distillatore: Frmproduttore_Domanda
// e i due cambi di numero (domanda e certificato UTF).
void RegistraMaschereDomandeProduttori();
