#pragma once
// Lettura della distilleria che usa il programma: la tabella DISTILLERIA ha al
// più una riga, e senza di essa il sistema non lavora.

// Vero se DISTILLERIA ha una riga: DistilleriaDati ne prende i tre campi (un
// Null diventa testo vuoto) e ModoDistilleria è "M". Con la tabella vuota
// DistilleriaAssente diventa vero, ModoDistilleria "I" e TitoloMaschera il
// titolo di frmInizializza. Gli errori del database escono come ErroreSistema:
// la routine non ha un'etichetta propria, li registra chi la chiama.
bool LeggiDistilleria();
