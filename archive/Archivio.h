#pragma once
// Salvataggio e ripristino del database dalle voci "Backup" e "Restore" del
// menu "Archivi". Non ha bisogno della finestra principale: tutto ciò che
// chiede o dice passa dalla piattaforma.

#include <QString>

// Il clic sulla voce: 0 salvataggio, 1 ripristino. Chiude la connessione
// della sessione, esegue l'operazione, la riapre comunque sia andata e
// rilegge la distilleria (un ripristino può portarne un'altra).
void ArchivioDaMenu(int Index);

// Chiede la cartella ed esegue il salvataggio (modo 0, percorso = il
// database) o il ripristino (modo 1, percorso = la cartella del database).
// Vero se riuscito; OperazioneAnnullata dice se l'utente ha rinunciato.
bool Gestione_DataBase(int modo, const QString& nomeFile, const QString& percorso);

// Richiesta di un disco: 0 l'ultimo della serie, altrimenti il numero.
// Falso se l'operazione va interrotta.
bool XZipDataBase_DiscoSuccessivo(int numero);
