#pragma once
// Matrice di controlli per indice, come TxtDati(i) o Cmddati(i): legge come
// una mappa, ma un indice che non c'è non inserisce nulla e solleva l'errore
// 340, che arriva al percorso d'errore della maschera.

#include <QList>
#include <QMap>

// Solleva l'ErroreSistema 340 per l'elemento "indice".
[[noreturn]] void ElementoControlloMancante(int indice);

template <typename T>
class ArrayControlli {
    using Mappa = QMap<int, T*>;

public:
    using const_iterator = typename Mappa::const_iterator;

    T* operator[](int indice) const
    {
        const auto it = m_elementi.constFind(indice);
        if (it == m_elementi.cend())
            ElementoControlloMancante(indice);
        return it.value();
    }

    bool contains(int indice) const { return m_elementi.contains(indice); }
    T* value(int indice, T* predefinito = nullptr) const { return m_elementi.value(indice, predefinito); }
    QList<int> keys() const { return m_elementi.keys(); }
    void insert(int indice, T* controllo) { m_elementi.insert(indice, controllo); }
    qsizetype size() const { return m_elementi.size(); }
    bool isEmpty() const { return m_elementi.isEmpty(); }

    // In ordine di indice; it.key() è l'indice, it.value() il controllo.
    const_iterator begin() const { return m_elementi.cbegin(); }
    const_iterator end() const { return m_elementi.cend(); }
    const_iterator cbegin() const { return m_elementi.cbegin(); }
    const_iterator cend() const { return m_elementi.cend(); }

private:
    Mappa m_elementi;
};
